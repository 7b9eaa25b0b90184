#pragma once

#include "JsonDocument.h"

namespace vemo::sfx {

/// Refuses a schema that RapidJSON 1.1 would crash on, loop over, or pass over in part, naming the
/// place in it; rewrites, to the same meaning, what it would read wrongly. Like RapidJSON it takes
/// every object for a schema, wherever in the document it stands.
void MakeSchemaUsable(rapidjson::Document& schema, JsonRefusal refuse);

} // namespace vemo::sfx
