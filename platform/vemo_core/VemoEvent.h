#pragma once

#include <string>

#include <vemo_core/export.h>

namespace cmn {

/// What every event of a change log has. A plain value.
class VEMO_CORE_EXPORT VemoEvent {
public:
    /// `number` is 0 for an event that is not in a change log yet.
    VemoEvent(unsigned int number, std::string eventId);
    VemoEvent(const VemoEvent&) = default;
    VemoEvent(VemoEvent&&) = default;
    VemoEvent& operator=(const VemoEvent&) = default;
    VemoEvent& operator=(VemoEvent&&) = default;
    virtual ~VemoEvent();

    /// Given by the change log, never twice; tells apart events that carry the same id.
    unsigned int Number() const { return number_; }
    /// For example "sfx.3".
    const std::string& EventId() const { return eventId_; }

private:
    unsigned int number_;
    std::string eventId_;
};

} // namespace cmn
