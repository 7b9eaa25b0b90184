#pragma once

#include <iosfwd>

#include <sfx/export.h>

namespace vemo::audio {

/// Kind of effect. `USER_PROVIDED` effects come from the user's own audio files.
enum SfxType : int { AMBIENT = 0, PRIMARY = 1, USER_PROVIDED = 2 };

/// Writes the text form, for example "SFX::PRIMARY". Any thread.
SFX_EXPORT std::ostream& operator<<(std::ostream& out, const SfxType& type);

} // namespace vemo::audio
