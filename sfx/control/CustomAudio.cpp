#include <sfx/control/CustomAudio.h>

#include <algorithm>
#include <limits>
#include <tuple>

namespace vemo::audio {

namespace {

unsigned short Milliseconds(unsigned int value) {
    constexpr unsigned int Most = std::numeric_limits<unsigned short>::max();
    return static_cast<unsigned short>(std::min(value, Most));
}

using Fields = std::tuple<const std::string&, const std::string&, int, float, float, float,
                          unsigned short, unsigned short>;

Fields CustomFields(const sfx::SfxDto& record) {
    return {record.name(),   record.effectPath(), record.repeats(), record.volume(),
            record.reverb(), record.pan(),        record.fadeIn(),  record.fadeOut()};
}

} // namespace

sfx::SfxDto CustomRecord(const CustomAudioParameters& parameters, const std::string& eventId) {
    return sfx::SfxDto::builder()
        .name(parameters.name().toStdString())
        .effectPath(parameters.file().toStdString())
        .repeats(parameters.repeats())
        .type(USER_PROVIDED)
        .volume(static_cast<float>(parameters.volume()))
        .reverb(static_cast<float>(parameters.reverb()))
        .pan(static_cast<float>(parameters.pan()))
        .fadeIn(Milliseconds(parameters.fadeIn()))
        .fadeOut(Milliseconds(parameters.fadeOut()))
        .eventId(eventId)
        .build();
}

bool PlaysCustom(const sfx::SfxDto& record, const sfx::SfxDto& custom) {
    return CustomFields(record) == CustomFields(custom);
}

} // namespace vemo::audio
