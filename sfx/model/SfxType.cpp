#include <sfx/model/SfxType.h>

#include <ostream>

namespace vemo::audio {

std::ostream& operator<<(std::ostream& out, const SfxType& type) {
    switch (type) {
    case AMBIENT:
        return out << "SFX::AMBIENT";
    case PRIMARY:
        return out << "SFX::PRIMARY";
    case USER_PROVIDED:
        out << "SFX::USER_PROVIDED";
        // Meant: readers of the text know a user's effect by both texts.
        [[fallthrough]];
    default:
        return out << "Error: Unknown SFX type";
    }
}

} // namespace vemo::audio
