#pragma once

#if defined(_WIN32)
#if defined(VEMO_AUDIO_BUILDING)
#define VEMO_AUDIO_EXPORT __declspec(dllexport)
#else
#define VEMO_AUDIO_EXPORT __declspec(dllimport)
#endif
#else
#define VEMO_AUDIO_EXPORT __attribute__((visibility("default")))
#endif
