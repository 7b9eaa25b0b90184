#include "SchemaPattern.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <utility>
#include <vector>

#include <rapidjson/encodings.h>
#include <rapidjson/stream.h>

namespace vemo::sfx {

namespace {

// The engine writes repetitions out, and recurses once for each optional part.
constexpr std::size_t kLargestSize = 4096;

const std::string kAnything = "^.*$";

// The part that a repetition sign would apply to.
struct Atom {
    std::size_t size = 1;
    bool mayBeEmpty = false;
    bool repeated = false;
};

struct Group {
    std::size_t size = 0;
    bool alternativeHasAtoms = false;
    bool alternativeMayBeEmpty = true;
    bool mayBeEmpty = false;
};

const char* ClassOf(char letter) {
    switch (letter) {
    case 'd':
        return "0-9";
    case 'w':
        return "a-zA-Z0-9_";
    case 's':
        return " \t\n\v\f\r";
    default:
        return nullptr;
    }
}

bool IsOneOf(char c, std::string_view characters) {
    return characters.find(c) != std::string_view::npos;
}

// The engine stops reading at what is no UTF-8.
bool IsReadable(const std::string& text) {
    rapidjson::StringStream stream(text.c_str());
    unsigned codepoint = 0;
    while (stream.Peek() != '\0') {
        if (!rapidjson::UTF8<>::Decode(stream, &codepoint)) {
            return false;
        }
    }
    return stream.Tell() == text.size();
}

class PatternReader {
public:
    explicit PatternReader(std::string_view pattern) : rest_(pattern) {}

    std::optional<std::string> Read() {
        while (!rest_.empty()) {
            if (!ReadNext() || (atom_ && atom_->size > kLargestSize)) {
                return std::nullopt;
            }
        }
        const bool anchored = atBegin_ || atEnd_;
        if (groups_.size() != 1 || !EndAlternative() || groups_.back().size > kLargestSize ||
            (anchored && choice_) || !IsReadable(usable_)) {
            return std::nullopt;
        }
        if (groups_.back().mayBeEmpty && !(atBegin_ && atEnd_)) {
            // It is found in every text, but not by the engine.
            return kAnything;
        }
        return usable_;
    }

private:
    bool ReadNext() {
        const char c = Take();
        switch (c) {
        case '(':
            return BeginGroup();
        case ')':
            return EndGroup();
        case '|':
            usable_ += c;
            choice_ = choice_ || groups_.size() == 1;
            return EndAlternative();
        case '*':
        case '+':
        case '?':
            usable_ += c;
            return Repeat(1, c != '+', c != '?');
        case '{':
            return ReadCount();
        case '[':
            return ReadClass();
        case '\\':
            return ReadEscape();
        // The engine takes an anchor for one of the whole pattern, wherever it stands.
        case '^':
            atBegin_ = usable_.empty();
            usable_ += c;
            return atBegin_;
        case '$':
            atEnd_ = rest_.empty();
            usable_ += c;
            return atEnd_;
        default:
            // The later bytes of a character belong to its first one.
            if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U) {
                BeginAtom({});
            }
            usable_ += c;
            return true;
        }
    }

    char Take() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        return c;
    }
    bool TakeIf(std::string_view next) {
        const bool found = rest_.starts_with(next);
        rest_.remove_prefix(found ? next.size() : 0);
        return found;
    }

    void BeginAtom(const Atom& atom) {
        EndAtom();
        atom_ = atom;
    }
    void EndAtom() {
        if (atom_) {
            Group& group = groups_.back();
            group.size += atom_->size;
            group.alternativeHasAtoms = true;
            group.alternativeMayBeEmpty = group.alternativeMayBeEmpty && atom_->mayBeEmpty;
            atom_.reset();
        }
    }
    bool EndAlternative() {
        EndAtom();
        Group& group = groups_.back();
        group.mayBeEmpty = group.mayBeEmpty || group.alternativeMayBeEmpty;
        group.alternativeMayBeEmpty = true;
        ++group.size;
        return std::exchange(group.alternativeHasAtoms, false);
    }

    bool BeginGroup() {
        EndAtom();
        groups_.emplace_back();
        usable_ += '(';
        return TakeIf("?:") || !rest_.starts_with('?');
    }
    bool EndGroup() {
        if (groups_.size() == 1 || !EndAlternative()) {
            return false;
        }
        const Group group = groups_.back();
        groups_.pop_back();
        usable_ += ')';
        BeginAtom({group.size, group.mayBeEmpty, false});
        return true;
    }

    bool Repeat(std::size_t times, bool mayBeEmpty, bool endless) {
        if (!atom_ || atom_->repeated || (endless && atom_->mayBeEmpty)) {
            return false;
        }
        atom_->size = atom_->size * times + 1;
        atom_->mayBeEmpty = atom_->mayBeEmpty || mayBeEmpty;
        atom_->repeated = true;
        // As few as possible or as many: for a match it is the same.
        TakeIf("?");
        return true;
    }

    bool ReadNumber(std::size_t& number) {
        const auto [end, error] =
            std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
        return error == std::errc() && number <= kLargestSize;
    }
    bool ReadCount() {
        const std::string_view count = rest_.substr(0, rest_.find('}') + 1);
        std::size_t least = 0;
        if (!ReadNumber(least)) {
            return false;
        }
        std::size_t most = least;
        bool endless = false;
        if (TakeIf(",")) {
            endless = rest_.starts_with('}');
            if (!endless && !ReadNumber(most)) {
                return false;
            }
        }
        if (!TakeIf("}") || most < least || (most == 0 && !endless)) {
            return false;
        }
        usable_.append("{").append(count);
        return Repeat(std::max<std::size_t>(most, 1), least == 0, endless);
    }

    bool ReadEscape() {
        if (rest_.empty()) {
            return false;
        }
        const char c = Take();
        BeginAtom({});
        if (IsOneOf(c, "^$|()?*+.[]{}\\fnrtv")) {
            usable_.append({'\\', c});
        } else if (const char* members = ClassOf(c)) {
            usable_.append("[").append(members).append("]");
        } else if (const char* others = ClassOf(static_cast<char>(c | 0x20))) {
            usable_.append("[^").append(others).append("]");
        } else if (IsOneOf(c, "/-_\"'#%&,:;<=>@!~` ")) {
            usable_ += c;
        } else {
            return false;
        }
        return true;
    }

    bool ReadClass() {
        BeginAtom({});
        usable_ += '[';
        if (TakeIf("^")) {
            usable_ += '^';
        }
        if (rest_.starts_with(']')) {
            return false;
        }
        const char* dash = "";
        while (!rest_.empty()) {
            const char c = Take();
            if (c == ']') {
                // The engine has no escape for it, but takes the last one as itself.
                usable_.append(dash).append("]");
                return true;
            }
            if (c != '\\') {
                usable_ += c;
            } else if (TakeIf("-")) {
                dash = "-";
            } else if (!ReadEscapeInClass()) {
                return false;
            }
        }
        return false;
    }
    bool ReadEscapeInClass() {
        if (rest_.empty()) {
            return false;
        }
        const char c = Take();
        if (IsOneOf(c, "^$|()?*+.[]{}\\bfnrtv")) {
            usable_.append({'\\', c});
        } else if (const char* members = ClassOf(c)) {
            usable_ += members;
        } else if (c == '/') {
            usable_ += c;
        } else {
            return false;
        }
        return true;
    }

    std::string_view rest_;
    std::string usable_;
    std::vector<Group> groups_{Group{}};
    std::optional<Atom> atom_;
    bool atBegin_ = false;
    bool atEnd_ = false;
    bool choice_ = false;
};

} // namespace

std::optional<std::string> UsablePattern(std::string_view pattern) {
    return pattern.empty() ? kAnything : PatternReader(pattern).Read();
}

} // namespace vemo::sfx
