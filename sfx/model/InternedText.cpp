#include "InternedText.h"

#include <mutex>
#include <unordered_set>

namespace vemo::audio {

namespace {

template <class Text>
struct Store {
    std::mutex mutex;
    std::unordered_set<Text> texts;
};

template <class Text>
const typename Text::value_type* Intern(const Text& text) {
    // Never destroyed: an exception may still be alive while the process goes down.
    static Store<Text>& store = *new Store<Text>;
    const std::lock_guard lock(store.mutex);
    return store.texts.insert(text).first->c_str();
}

} // namespace

const char* InternText(const std::string& text) {
    return Intern(text);
}

const wchar_t* InternText(const std::wstring& text) {
    return Intern(text);
}

} // namespace vemo::audio
