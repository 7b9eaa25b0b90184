#include "SchemaCheck.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include <rapidjson/pointer.h>

#include "SchemaPattern.h"

namespace vemo::sfx {

namespace {

using rapidjson::Value;

constexpr int kLongestReferences = 64;
constexpr std::size_t kMostValidators = 1000;
// To compile a schema takes time in proportion to the square of their number.
constexpr std::size_t kMostObjects = 4096;

bool HoldsOnly(const Value& array, bool (Value::*isType)() const) {
    return std::all_of(array.Begin(), array.End(),
                       [&](const Value& element) { return (element.*isType)(); });
}

bool IsTrueToType(const Value& value, const std::string& keyword) {
    if (keyword == "patternProperties") {
        return value.IsObject() &&
               std::all_of(value.MemberBegin(), value.MemberEnd(),
                           [](const auto& member) { return member.value.IsObject(); });
    }
    if (keyword == "not") {
        return value.IsObject();
    }
    if (keyword == "dependencies" && value.IsObject()) {
        return std::all_of(value.MemberBegin(), value.MemberEnd(), [](const auto& member) {
            return !member.value.IsArray() || HoldsOnly(member.value, &Value::IsString);
        });
    }
    const bool listsSchemas =
        keyword == "items" || keyword == "allOf" || keyword == "anyOf" || keyword == "oneOf";
    return !listsSchemas || !value.IsArray() || HoldsOnly(value, &Value::IsObject);
}

class SchemaCheck {
public:
    SchemaCheck(rapidjson::Document& schema, JsonRefusal refuse)
        : schema_(schema), refuse_(refuse) {}

    void Run() {
        Shape(schema_, "#", false);
        References(schema_, "#");
    }

private:
    void Refuse(const std::string& where, const std::string& what) const {
        refuse_(where + " " + what);
    }

    // What an "enum" lists is checked too, but stays as it is.
    void Shape(Value& value, const std::string& where, bool listed) {
        if (value.IsArray()) {
            for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
                Shape(value[i], where + "/" + std::to_string(i), listed);
            }
        }
        if (!value.IsObject()) {
            return;
        }
        if (++objects_ > kMostObjects) {
            Refuse("#", "holds more than " + std::to_string(kMostObjects) + " objects");
        }
        std::unordered_set<std::string> keywords;
        for (auto& member : value.GetObject()) {
            const std::string keyword(member.name.GetString(), member.name.GetStringLength());
            const std::string place = where + "/" + keyword;
            if (!keywords.insert(keyword).second) {
                Refuse(place, "stands there twice");
            }
            if (!IsTrueToType(member.value, keyword)) {
                Refuse(place, "holds a value of the wrong type");
            }
            Shape(member.value, place, listed || (keyword == "enum" && member.value.IsArray()));
            if (keyword == "pattern" && member.value.IsString()) {
                Pattern(member.value, place, listed);
            } else if (keyword == "patternProperties") {
                for (auto& property : member.value.GetObject()) {
                    Pattern(property.name, place, listed);
                }
                if (!listed) {
                    RefuseOthersBySchema(value);
                }
            }
        }
    }

    void Pattern(Value& text, const std::string& where, bool listed) {
        const std::string pattern(text.GetString(), text.GetStringLength());
        const std::optional<std::string> usable = UsablePattern(pattern);
        if (!usable) {
            Refuse(where, "holds a pattern that is not supported: " + pattern);
        }
        if (!listed && *usable != pattern) {
            text.SetString(usable->data(), static_cast<rapidjson::SizeType>(usable->size()),
                           schema_.GetAllocator());
        }
    }

    // Next to "patternProperties" the validator loses count over an "additionalProperties" of
    // false, and writes out of bounds. A schema that nothing fulfils means the same.
    void RefuseOthersBySchema(Value& object) {
        const auto others = object.FindMember("additionalProperties");
        if (others != object.MemberEnd() && others->value.IsFalse()) {
            others->value.SetObject().AddMember("not", Value(rapidjson::kObjectType),
                                                schema_.GetAllocator());
        }
    }

    void References(const Value& value, const std::string& where) {
        if (value.IsArray()) {
            for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
                References(value[i], where + "/" + std::to_string(i));
            }
        } else if (value.IsObject()) {
            CountValidators(value, where, 0);
            for (const auto& member : value.GetObject()) {
                References(member.value, where + "/" + member.name.GetString());
            }
        }
    }

    // How many schemas are applied to one value by this one.
    std::size_t CountValidators(const Value& schema, const std::string& where, int steps) {
        const auto [known, isNew] = validators_.try_emplace(&schema, 0);
        if (!isNew) {
            if (known->second == 0) {
                Refuse(where, "refers to itself");
            }
            return known->second;
        }
        if (steps > kLongestReferences) {
            Refuse(where, "refers over too many others");
        }
        std::size_t count = 1;
        const auto add = [&](const Value& other) {
            if (other.IsObject()) {
                count += CountValidators(other, where, steps + 1);
            }
        };
        const Value* reference = FindMember(schema, "$ref");
        if (reference != nullptr && reference->IsString()) {
            add(Target(*reference, where));
        } else {
            for (const char* keyword : {"allOf", "anyOf", "oneOf"}) {
                const Value* list = FindMember(schema, keyword);
                if (list != nullptr && list->IsArray()) {
                    std::for_each(list->Begin(), list->End(), add);
                }
            }
            if (const Value* opposite = FindMember(schema, "not")) {
                add(*opposite);
            }
            const Value* dependencies = FindMember(schema, "dependencies");
            if (dependencies != nullptr && dependencies->IsObject()) {
                for (const auto& member : dependencies->GetObject()) {
                    add(member.value);
                }
            }
        }
        if (count > kMostValidators) {
            Refuse(where, "applies too many schemas to one value");
        }
        return validators_[&schema] = count;
    }

    const Value& Target(const Value& reference, const std::string& where) const {
        const std::string text(reference.GetString(), reference.GetStringLength());
        if (!text.starts_with('#')) {
            Refuse(where, "refers to another document: " + text);
        }
        const rapidjson::Pointer pointer(text.data(), text.size());
        const Value* target = &schema_;
        for (std::size_t i = 0; i < pointer.GetTokenCount() && target != nullptr; ++i) {
            const auto& token = pointer.GetTokens()[i];
            const bool isNumber = token.index != rapidjson::kPointerInvalidIndex;
            if (target->IsArray()) {
                target =
                    isNumber && token.index < target->Size() ? &(*target)[token.index] : nullptr;
            } else {
                // RapidJSON finds no member whose name is a number.
                target = isNumber ? nullptr : FindMember(*target, token.name);
            }
        }
        if (!pointer.IsValid() || target == nullptr || !target->IsObject()) {
            Refuse(where, "refers to no schema in this document: " + text);
        }
        return *target;
    }

    rapidjson::Document& schema_;
    JsonRefusal refuse_;
    std::size_t objects_ = 0;
    // By schema; 0 while it is being counted.
    std::unordered_map<const Value*, std::size_t> validators_;
};

} // namespace

void MakeSchemaUsable(rapidjson::Document& schema, JsonRefusal refuse) {
    if (!schema.IsObject()) {
        refuse("# must be an object");
    }
    SchemaCheck(schema, refuse).Run();
}

} // namespace vemo::sfx
