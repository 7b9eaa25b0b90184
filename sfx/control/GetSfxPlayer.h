#pragma once

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>

namespace vemo::audio::sfx {

/// A new SfxPlayer for the record, deleted by the caller; throws as its constructor does.
SFX_EXPORT SfxPlayerInterface* GetSfxPlayer(const SfxDto& record);

} // namespace vemo::audio::sfx
