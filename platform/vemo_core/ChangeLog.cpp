#include <vemo_core/ChangeLog.h>

#include <utility>

#include <vemo_core/ActiveChangeLogExclusive.h>

#include "ActiveLog.h"

namespace CL {

Sfx::Sfx(unsigned int number, std::string eventId, SfxProperties properties)
    : cmn::VemoEvent(number, std::move(eventId)), properties_(std::move(properties)) {}

ShowFileError::ShowFileError(const std::string& text) : std::runtime_error(text) {}
ShowFileError::~ShowFileError() = default;

ChangeLog::ChangeLog() = default;
ChangeLog::~ChangeLog() = default;

void Editor::AddSoundEffect(const Sfx& event) {
    const ActiveChangeLogExclusive exclusive;
    ActiveLog::Instance().Add(event);
}

void Editor::EditSoundEffectSFXPropertyValues(const Sfx& event, const SfxProperties& properties) {
    const ActiveChangeLogExclusive exclusive;
    ActiveLog::Instance().Edit(event, properties);
}

void Editor::DeleteEvent(const cmn::VemoEvent& event) {
    const ActiveChangeLogExclusive exclusive;
    ActiveLog::Instance().Delete(event);
}

std::uint64_t Editor::GetNextSfxEventIdSuffix() {
    const ActiveChangeLogExclusive exclusive;
    return ActiveLog::Instance().TakeSuffix();
}

std::uint64_t Editor::PreviewNextSfxEventId() const {
    const ActiveChangeLogExclusive exclusive;
    return ActiveLog::Instance().NextSuffix();
}

void OpenShow(const std::string& path) {
    const ActiveChangeLogExclusive exclusive;
    ActiveLog::Instance().Open(path);
}

void CloseShow() {
    const ActiveChangeLogExclusive exclusive;
    ActiveLog::Instance().Close();
}

} // namespace CL
