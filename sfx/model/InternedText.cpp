#include "InternedText.h"

#include <mutex>
#include <unordered_set>

namespace vemo::audio {

namespace {

struct Store {
    std::mutex mutex;
    std::unordered_set<std::string> texts;
};

Store& TheStore() {
    // Never destroyed: an exception may still be alive while the process goes down.
    static Store& store = *new Store;
    return store;
}

} // namespace

const char* InternText(const std::string& text) {
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return store.texts.insert(text).first->c_str();
}

} // namespace vemo::audio
