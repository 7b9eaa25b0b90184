#pragma once

#include <sfx/export.h>

/// Kinds of active interval. Only `SONG` is implemented.
enum class IntervalType : int { SEQUENCE = 0, SONG = 1 };

/// A stretch during which an effect is active. The order of the virtual operations is part of
/// the interface.
class SFX_EXPORT IntervalInterface {
public:
    virtual ~IntervalInterface() = default;
    virtual void type(IntervalType type) = 0;
    virtual IntervalType type() = 0;
};
