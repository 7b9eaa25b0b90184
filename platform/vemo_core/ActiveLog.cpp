#include "ActiveLog.h"

#include <charconv>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace CL {

namespace {

// The last one is never given, so that there is always a next one to be kept.
constexpr std::uint64_t kNoSuffix = std::numeric_limits<std::uint64_t>::max();

std::optional<std::uint64_t> SuffixOf(std::string_view eventId) {
    constexpr std::string_view kStart = "sfx.";
    if (!eventId.starts_with(kStart)) {
        return std::nullopt;
    }
    eventId.remove_prefix(kStart.size());
    std::uint64_t suffix = 0;
    const char* const last = eventId.data() + eventId.size();
    const auto [end, error] = std::from_chars(eventId.data(), last, suffix);
    if (error != std::errc() || end != last || suffix == kNoSuffix) {
        return std::nullopt;
    }
    return suffix;
}

} // namespace

ActiveLog& ActiveLog::Instance() {
    static ActiveLog& log = *new ActiveLog;
    return log;
}

std::string ActiveLog::ShowFile() const {
    return file_ ? file_->Path() : std::string();
}

ActiveLog::Index::iterator ActiveLog::Find(const cmn::VemoEvent& event) {
    const auto found = byNumber_.find(event.Number());
    // A number alone may be one of another show.
    const bool same = found != byNumber_.end() && found->second->EventId() == event.EventId();
    return same ? found : byNumber_.end();
}

void ActiveLog::Add(const Sfx& event) {
    if (content_.lastNumber == std::numeric_limits<unsigned int>::max()) {
        throw std::length_error("The change log has no number left for another event");
    }
    const unsigned int number = content_.lastNumber + 1;
    const std::uint64_t suffix = SuffixOf(event.EventId()).value_or(0);
    const std::uint64_t next = suffix < content_.nextSuffix ? content_.nextSuffix : suffix + 1;

    // What may fail in memory comes before the file, what is left after it cannot fail.
    std::list<Sfx> added;
    added.emplace_back(number, event.EventId(), event.sfx_properties());
    const auto entry = byNumber_.emplace(number, added.begin()).first;
    if (file_) {
        try {
            file_->Add(added.front(), next);
        } catch (...) {
            byNumber_.erase(entry);
            throw;
        }
    }
    content_.events.splice(content_.events.end(), added);
    content_.lastNumber = number;
    content_.nextSuffix = next;
}

void ActiveLog::Edit(const Sfx& event, const SfxProperties& properties) {
    const auto found = Find(event);
    if (found == byNumber_.end()) {
        return;
    }
    Sfx edited(event.Number(), event.EventId(), properties);
    if (file_) {
        file_->Edit(edited.Number(), properties);
    }
    *found->second = std::move(edited);
}

void ActiveLog::Delete(const cmn::VemoEvent& event) {
    const auto found = Find(event);
    if (found == byNumber_.end()) {
        return;
    }
    if (file_) {
        file_->Delete(event.Number());
    }
    const Place place = found->second;
    byNumber_.erase(found);
    content_.events.erase(place); // perhaps the very event that was passed in
}

std::uint64_t ActiveLog::TakeSuffix() {
    const std::uint64_t suffix = NextSuffix();
    if (file_) {
        file_->SetNextSuffix(suffix + 1);
    }
    content_.nextSuffix = suffix + 1;
    return suffix;
}

std::uint64_t ActiveLog::NextSuffix() const {
    if (content_.nextSuffix == kNoSuffix) {
        throw std::length_error("The change log has no suffix left for another event id");
    }
    return content_.nextSuffix;
}

void ActiveLog::Open(const std::string& path) {
    if (file_ && file_->IsAt(path)) {
        return;
    }
    LogContent content;
    std::unique_ptr<CL::ShowFile> file = CL::ShowFile::Open(path, content);
    Index byNumber;
    byNumber.reserve(content.events.size());
    for (auto place = content.events.begin(); place != content.events.end(); ++place) {
        byNumber.emplace(place->Number(), place);
    }
    std::swap(content_, content);
    byNumber_.swap(byNumber);
    file_.swap(file);
}

void ActiveLog::Close() {
    content_ = LogContent();
    byNumber_.clear();
    file_.reset();
}

} // namespace CL
