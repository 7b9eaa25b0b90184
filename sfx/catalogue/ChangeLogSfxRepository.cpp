#include <sfx/catalogue/ChangeLogSfxRepository.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <vemo_core/ActiveChangeLogExclusive.h>

namespace vemo::audio {

namespace {

const std::string& RequireText(const std::any& id, const char* message) {
    const auto* text = std::any_cast<std::string>(&id);
    if (text == nullptr) {
        throw std::invalid_argument(message);
    }
    return *text;
}

} // namespace

ChangeLogSfxRepository::~ChangeLogSfxRepository() = default;

sfx::SfxDto ChangeLogSfxRepository::MapToDto(const CL::Sfx* event) {
    const CL::SfxProperties& properties = event->sfx_properties();
    return sfx::SfxDto::builder()
        .name(properties.name())
        .effectId(properties.effectId())
        .effectPath(properties.effectId() + ".sfx")
        .type(SfxType::PRIMARY)
        .volume(properties.volume())
        .fadeIn(properties.fadeIn())
        .fadeOut(properties.fadeOut())
        .repeats(properties.repeats())
        .eventId(event->EventId())
        .pan(properties.pan())
        .reverb(properties.reverb())
        .build();
}

CL::Sfx ChangeLogSfxRepository::MapToEvent(const sfx::SfxDto& record) {
    CL::SfxProperties properties;
    properties.setEffectId(record.effectId());
    properties.setEffectIdIndex(record.effectIdIndex());
    properties.setName(record.name());
    properties.setVolume(record.volume());
    properties.setPan(record.pan());
    properties.setReverb(record.reverb());
    properties.setFadeIn(record.fadeIn());
    properties.setFadeOut(record.fadeOut());
    properties.setOutputPath(record.outputPath());
    properties.setRepeats(record.repeats());
    return {0, record.eventId(), std::move(properties)};
}

void ChangeLogSfxRepository::Save(sfx::SfxDto record) {
    editor_.AddSoundEffect(MapToEvent(record));
}

std::list<sfx::SfxDto> ChangeLogSfxRepository::Get() {
    const ActiveChangeLogExclusive exclusive;
    std::list<sfx::SfxDto> records;
    for (const CL::Sfx& event : exclusive.Get().SoundEffects()) {
        records.push_back(MapToDto(&event));
    }
    return records;
}

std::optional<sfx::SfxDto> ChangeLogSfxRepository::GetById(std::any id) {
    const std::string& eventId =
        RequireText(id, "ChangeLogSfxRepository::GetById requires a std::string for the event id");
    const ActiveChangeLogExclusive exclusive;
    std::list<sfx::SfxDto> records = Get();
    const auto found = std::find_if(records.begin(), records.end(), [&](const sfx::SfxDto& record) {
        return record.eventId() == eventId;
    });
    if (found == records.end()) {
        return std::nullopt;
    }
    return std::move(*found);
}

void ChangeLogSfxRepository::Update(std::any id, sfx::SfxDto record) {
    const ActiveChangeLogExclusive exclusive;
    for (const CL::Sfx& event : exclusive.Get().SoundEffects()) {
        // Meant: an id of another type is only noticed where there is an event to compare.
        if (event.EventId() == std::any_cast<std::string>(id)) {
            editor_.EditSoundEffectSFXPropertyValues(event, MapToEvent(record).sfx_properties());
            return;
        }
    }
}

void ChangeLogSfxRepository::Delete(std::any id) {
    const std::string& eventId =
        RequireText(id, "ChangeLogSfxRepository::Delete requires a std::string for the event id");
    const ActiveChangeLogExclusive exclusive;
    for (const CL::Sfx& event : exclusive.Get().SoundEffects()) {
        if (event.EventId() == eventId) {
            editor_.DeleteEvent(event);
            return;
        }
    }
}

std::string ChangeLogSfxRepository::GenerateEventId() {
    return "sfx." + std::to_string(editor_.GetNextSfxEventIdSuffix());
}

std::string ChangeLogSfxRepository::PreviewEventId() {
    return "sfx." + std::to_string(editor_.PreviewNextSfxEventId());
}

} // namespace vemo::audio
