#pragma once

#include <istream>
#include <optional>
#include <string>

#include <rapidjson/document.h>

namespace vemo::sfx {

/// Throws; `what` says what is wrong with the file that is being read.
using JsonRefusal = void (*)(const std::string& what);

/// A document nested at most 64 levels deep, or nothing for any other content. Neither reading nor
/// destroying it takes more stack than that. Made and used by one thread.
std::optional<rapidjson::Document> ParseJson(std::istream& text);

/// Null unless `object` is an object that has the member.
const rapidjson::Value* FindMember(const rapidjson::Value& object, const char* key);

/// The strings of an object, each refused by name if it is missing or of another type.
class JsonObject {
public:
    /// `where` is the object's place in the document, empty for the document itself. Refused if
    /// `value` is no object.
    JsonObject(const rapidjson::Value& value, std::string where, JsonRefusal refuse);

    std::string Text(const char* key) const;
    /// Refuses a NUL character as well: the text ends up where one ends it.
    std::string TerminatedText(const char* key) const;

private:
    std::string Name(const char* key) const;

    const rapidjson::Value& value_;
    std::string where_;
    JsonRefusal refuse_;
};

} // namespace vemo::sfx
