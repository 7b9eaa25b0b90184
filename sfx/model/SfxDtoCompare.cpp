#include <sfx/model/SfxDto.h>

#include <compare>
#include <initializer_list>

namespace vemo::audio::sfx {

// The event and the intervals take no part: a player plays the same effect whichever event
// started it. The first difference decides, so a NaN behind an earlier difference goes unnoticed.
std::partial_ordering SfxDto::operator<=>(const SfxDto& other) const {
    for (const std::partial_ordering order : std::initializer_list<std::partial_ordering>{
             name_ <=> other.name_, outputPath_ <=> other.outputPath_,
             effectId_ <=> other.effectId_, effectPath_ <=> other.effectPath_,
             static_cast<int>(type_) <=> static_cast<int>(other.type_),
             effectIdIndex_ <=> other.effectIdIndex_, repeats_ <=> other.repeats_,
             fadeIn_ <=> other.fadeIn_, fadeOut_ <=> other.fadeOut_, volume_ <=> other.volume_,
             reverb_ <=> other.reverb_, pan_ <=> other.pan_}) {
        if (order != std::partial_ordering::equivalent) {
            return order;
        }
    }
    return std::partial_ordering::equivalent;
}

bool SfxDto::operator==(const SfxDto& other) const {
    return (*this <=> other) == std::partial_ordering::equivalent;
}

} // namespace vemo::audio::sfx
