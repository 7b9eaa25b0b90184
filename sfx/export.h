#pragma once

// SFX_EXPORT marks what a host may use; everything else stays inside the library.
#if defined(_WIN32)
#if defined(SFX_BUILDING)
#define SFX_EXPORT __declspec(dllexport)
#else
#define SFX_EXPORT __declspec(dllimport)
#endif
#else
#define SFX_EXPORT __attribute__((visibility("default")))
#endif
