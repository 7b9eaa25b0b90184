#pragma once

#include <QLoggingCategory>

namespace vemo::audio {

/// Category "sfx.player": why a playback ended without its sound.
Q_DECLARE_LOGGING_CATEGORY(lcPlayer)

} // namespace vemo::audio
