#pragma once

#include <memory>

#include <sfx/model/SfxDto.h>

namespace vemo::audio {

/// Keeps a record that a host has a pointer to and that no player holds any more. Room is for the
/// last 4096 of the process; the oldest goes first. Any thread.
void KeepHandedOutRecord(std::shared_ptr<const sfx::SfxDto> record);

} // namespace vemo::audio
