#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

#include <vemo_core/ChangeLog.h>

#include "ShowFile.h"

namespace CL {

/// The change log of this process: memory, and behind it the show file, if one is open. An edit
/// goes into the file first. All of it, but for Instance() and Mutex(), under the mutex.
class ActiveLog final : public ChangeLog {
public:
    /// Lives as long as the process: other threads may still use it while that ends.
    static ActiveLog& Instance();
    std::recursive_mutex& Mutex() { return mutex_; }

    const std::list<Sfx>& SoundEffects() const override { return content_.events; }
    std::string ShowFile() const override;

    void Add(const Sfx& event);
    void Edit(const Sfx& event, const SfxProperties& properties);
    void Delete(const cmn::VemoEvent& event);
    std::uint64_t TakeSuffix();
    std::uint64_t NextSuffix() const;

    void Open(const std::string& path);
    void Close();

private:
    using Place = std::list<Sfx>::iterator;
    using Index = std::unordered_map<unsigned int, Place>;

    // end() for an event that is not in the log.
    Index::iterator Find(const cmn::VemoEvent& event);

    std::recursive_mutex mutex_;
    LogContent content_;
    Index byNumber_;
    std::unique_ptr<CL::ShowFile> file_;
};

} // namespace CL
