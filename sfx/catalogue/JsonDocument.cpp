#include "JsonDocument.h"

#include <utility>

#include <rapidjson/istreamwrapper.h>
#include <rapidjson/reader.h>

namespace vemo::sfx {

namespace {

constexpr int kDeepestNesting = 64;

// RapidJSON itself sets no limit to the nesting of a document.
class ShallowDocument : public rapidjson::Document {
public:
    bool StartObject() { return Enter() && GenericDocument::StartObject(); }
    bool StartArray() { return Enter() && GenericDocument::StartArray(); }
    bool EndObject(rapidjson::SizeType memberCount) {
        --depth_;
        return GenericDocument::EndObject(memberCount);
    }
    bool EndArray(rapidjson::SizeType elementCount) {
        --depth_;
        return GenericDocument::EndArray(elementCount);
    }

private:
    bool Enter() { return ++depth_ <= kDeepestNesting; }

    int depth_ = 0;
};

} // namespace

std::optional<rapidjson::Document> ParseJson(std::istream& text) {
    ShallowDocument document;
    bool good = false;
    auto generate = [&](rapidjson::Document&) {
        rapidjson::IStreamWrapper stream(text);
        rapidjson::Reader reader;
        good = !reader.Parse<rapidjson::kParseIterativeFlag>(stream, document).IsError();
        return good;
    };
    document.Populate(generate);
    // The reader takes a NUL for the end of the text.
    if (!good || text.peek() != std::istream::traits_type::eof()) {
        return std::nullopt;
    }
    return document;
}

const rapidjson::Value* FindMember(const rapidjson::Value& object, const char* key) {
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto member = object.FindMember(key);
    return member == object.MemberEnd() ? nullptr : &member->value;
}

JsonObject::JsonObject(const rapidjson::Value& value, std::string where, JsonRefusal refuse)
    : value_(value), where_(std::move(where)), refuse_(refuse) {
    if (!value_.IsObject()) {
        refuse_((where_.empty() ? "the document" : where_) + " must be an object");
    }
}

std::string JsonObject::Name(const char* key) const {
    return where_.empty() ? key : where_ + "." + key;
}

std::string JsonObject::Text(const char* key) const {
    const rapidjson::Value* text = FindMember(value_, key);
    if (text == nullptr || !text->IsString()) {
        refuse_(Name(key) + " must be a string");
        return {};
    }
    return {text->GetString(), text->GetStringLength()};
}

std::string JsonObject::TerminatedText(const char* key) const {
    std::string text = Text(key);
    if (text.find('\0') != std::string::npos) {
        refuse_(Name(key) + " must not hold a NUL character");
    }
    return text;
}

} // namespace vemo::sfx
