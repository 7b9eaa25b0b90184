#pragma once

#if defined(_WIN32)
#if defined(VEMO_CORE_BUILDING)
#define VEMO_CORE_EXPORT __declspec(dllexport)
#else
#define VEMO_CORE_EXPORT __declspec(dllimport)
#endif
#else
#define VEMO_CORE_EXPORT __attribute__((visibility("default")))
#endif
