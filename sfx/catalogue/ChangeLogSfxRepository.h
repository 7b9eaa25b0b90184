#pragma once

#include <sfx/catalogue/SfxRepository.h>
#include <sfx/export.h>
#include <vemo_core/ChangeLog.h>

namespace vemo::audio {

/// The sound effects of the active change log as records. Any thread.
///
/// The change log keeps less than a record: what comes back has type PRIMARY, an effect path of
/// the effect id followed by ".sfx", an empty output path, effect index 0 and no intervals.
class SFX_EXPORT ChangeLogSfxRepository : public SfxRepository {
public:
    ChangeLogSfxRepository() = default;
    ChangeLogSfxRepository(const ChangeLogSfxRepository&) = default;
    ChangeLogSfxRepository& operator=(const ChangeLogSfxRepository&) = default;
    ~ChangeLogSfxRepository() override;

    /// Appends an event. Throws CL::ShowFileError when the open show file cannot be written, as
    /// the other editing operations do.
    void Save(sfx::SfxDto record) override;
    std::list<sfx::SfxDto> Get() override;
    /// Throws std::invalid_argument for an id that is no std::string.
    std::optional<sfx::SfxDto> GetById(std::any id) override;
    /// Changes the first event with that id; none is fine. An id that is no std::string throws
    /// std::bad_any_cast, but only if there is any event to compare it with; meant so.
    void Update(std::any id, sfx::SfxDto record) override;
    /// Deletes the first event with that id; none is fine. Throws std::invalid_argument for an id
    /// that is no std::string.
    void Delete(std::any id) override;
    /// "sfx." and a number that no event of the show ever had.
    std::string GenerateEventId() override;
    std::string PreviewEventId() override;

private:
    static sfx::SfxDto MapToDto(const CL::Sfx* event);
    static CL::Sfx MapToEvent(const sfx::SfxDto& record);

    CL::Editor editor_;
};

} // namespace vemo::audio
