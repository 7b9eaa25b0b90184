#pragma once

#include <QLoggingCategory>

namespace vemo::audio {

/// Category "sfx.control": failures that no caller is there to hear of.
Q_DECLARE_LOGGING_CATEGORY(lcControl)

} // namespace vemo::audio
