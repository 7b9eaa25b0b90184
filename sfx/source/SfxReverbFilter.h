#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <QObject>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/source/SfxAudioFilterInterface.h>

namespace vemo::audio {

/// Feedback echo over a delay line of 5512 frames with a soft limiter on the delayed signal.
class SFX_EXPORT SfxReverbFilter : public QObject, public SfxAudioFilterInterface {
    Q_OBJECT

public:
    /// Reads the record's reverb now; later changes of the record do not reach the filter.
    SfxReverbFilter(std::shared_ptr<sfx::SfxDto> record, QObject* parent);

    void apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) override;

private:
    void fitTo_(unsigned int channels);
    void mixIn_(std::int16_t* samples, std::size_t begin, std::size_t end, const float* ramp);

    float mix_;
    std::vector<std::int16_t> delayLine_;
    std::vector<float> ramps_;
};

} // namespace vemo::audio
