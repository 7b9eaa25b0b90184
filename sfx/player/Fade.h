#pragma once

#include <functional>
#include <memory>

#include <QPromise>

#include <sfx/player/SfxPlayerInterface.h>
#include <sfx/player/SinkLink.h>

namespace vemo::audio {

/// One fade, from its first to its last step, on the calling thread (a pool thread): moves the
/// sink's volume along a FadeCurve and reports percent and volume through `promise`, which also
/// suspends and cancels it between two steps. With `stopAfterFade` it then ends the playback and
/// calls `finished`.
///
/// A cancelled fade mutes the sink, ends the playback and does not call `finished`.
void RunFade(QPromise<void>& promise, const std::weak_ptr<SinkLink>& sink, VolumeType volume,
             FadeType duration, bool stopAfterFade, const std::function<void()>& finished);

} // namespace vemo::audio
