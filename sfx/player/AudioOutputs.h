#pragma once

#include <QAudioDevice>
#include <QList>

namespace vemo::audio {

/// What QMediaDevices lists, and its default. Any thread; waits for the audio server if it takes
/// the call and does not answer.
QList<QAudioDevice> AudioOutputs();
QAudioDevice DefaultAudioOutput();

} // namespace vemo::audio
