#pragma once

#include <string>

#include <sfx/model/CustomAudioParameters.h>
#include <sfx/model/SfxDto.h>

namespace vemo::audio {

/// The record of type USER_PROVIDED that plays these parameters. Volume, reverb and pan are
/// narrowed to float; fades end at the record's 65,535 ms.
sfx::SfxDto CustomRecord(const CustomAudioParameters& parameters, const std::string& eventId);

/// Whether the record plays what CustomRecord() made of some parameters: name, file, repeats,
/// volume, reverb, pan and fades are exactly equal.
bool PlaysCustom(const sfx::SfxDto& record, const sfx::SfxDto& custom);

} // namespace vemo::audio
