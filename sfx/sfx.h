#pragma once

// Everything a host needs.
#include <sfx/catalogue/ChangeLogSfxRepository.h>
#include <sfx/catalogue/SfxManifest.h>
#include <sfx/catalogue/SfxRepository.h>
#include <sfx/catalogue/SfxVector.h>
#include <sfx/export.h>
#include <sfx/model/BadFileException.h>
#include <sfx/model/CustomAudioException.h>
#include <sfx/model/IntervalInterface.h>
#include <sfx/model/SfxDto.h>
#include <sfx/model/SfxException.h>
#include <sfx/model/SfxType.h>
#include <sfx/model/SongInterval.h>
#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/player/SfxPlayerInterface.h>
#include <sfx/source/DecodeState.h>
#include <sfx/source/EncryptedVorbisFile.h>
#include <sfx/source/SfxAudioFilterInterface.h>
#include <sfx/source/SfxAudioStream.h>
#include <sfx/source/SfxFileInterface.h>
#include <sfx/source/SfxPanFilter.h>
#include <sfx/source/SfxReverbFilter.h>
#include <sfx/source/UserAudioFile.h>
