#pragma once

#include <memory>

#include <QObject>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/source/SfxAudioFilterInterface.h>

namespace vemo::audio {

/// Linear stereo balance: the first channel gets 1 - pan, every other channel pan.
/// Meant to be that plain: the centre halves both sides, which is why a centred effect gets no
/// pan filter at all.
class SFX_EXPORT SfxPanFilter : public QObject, public SfxAudioFilterInterface {
    Q_OBJECT

public:
    /// Reads the record's pan now; later changes of the record do not reach the filter.
    SfxPanFilter(std::shared_ptr<sfx::SfxDto> record, QObject* parent);

    void apply(std::int16_t* samples, std::int64_t frames, unsigned int channels) override;

private:
    float pan_;
};

} // namespace vemo::audio
