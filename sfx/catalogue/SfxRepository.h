#pragma once

#include <any>
#include <list>
#include <optional>
#include <string>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>

namespace vemo::audio {

/// Store of effect records, each identified by its event id, which is passed as a std::any that
/// holds a std::string. The order of the virtual operations is part of the interface.
///
/// The controller calls it from pool threads: an implementation answers any thread.
class SFX_EXPORT SfxRepository {
public:
    virtual ~SfxRepository() = default;
    virtual void Save(sfx::SfxDto record) = 0;
    /// All records, in the order of the store.
    virtual std::list<sfx::SfxDto> Get() = 0;
    virtual std::optional<sfx::SfxDto> GetById(std::any id) = 0;
    virtual void Update(std::any id, sfx::SfxDto record) = 0;
    virtual void Delete(std::any id) = 0;
    /// A new event id, never given before.
    virtual std::string GenerateEventId() = 0;
    /// The event id that GenerateEventId() would give.
    virtual std::string PreviewEventId() = 0;
};

} // namespace vemo::audio
