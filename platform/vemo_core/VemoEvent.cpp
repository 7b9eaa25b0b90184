#include <vemo_core/VemoEvent.h>

#include <utility>

namespace cmn {

VemoEvent::VemoEvent(unsigned int number, std::string eventId)
    : number_(number), eventId_(std::move(eventId)) {}

VemoEvent::~VemoEvent() = default;

} // namespace cmn
