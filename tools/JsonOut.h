#pragma once

#include <string>
#include <string_view>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace vemo::tool {

namespace detail {
struct JsonBuffer {
    rapidjson::StringBuffer buffer;
};
} // namespace detail

/// RapidJSON's writer, indented, with its text.
class JsonOut : private detail::JsonBuffer,
                public rapidjson::PrettyWriter<rapidjson::StringBuffer> {
public:
    JsonOut() : PrettyWriter(JsonBuffer::buffer) {
        SetIndent(' ', 2);
        SetMaxDecimalPlaces(3);
    }

    void string(std::string_view value) {
        String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }
    void member(const char* key, std::string_view value) {
        Key(key);
        string(value);
    }

    /// The finished document, with a newline.
    std::string text() const { return std::string(JsonBuffer::buffer.GetString()) + "\n"; }
};

} // namespace vemo::tool
