#pragma once

#include <vemo_core/ChangeLog.h>
#include <vemo_core/export.h>

/// Exclusive access to the active change log for as long as the object lives. Other threads wait;
/// the same thread may take it again, and may edit the log meanwhile.
class VEMO_CORE_EXPORT ActiveChangeLogExclusive {
public:
    ActiveChangeLogExclusive();
    ~ActiveChangeLogExclusive();
    ActiveChangeLogExclusive(const ActiveChangeLogExclusive&) = delete;
    ActiveChangeLogExclusive& operator=(const ActiveChangeLogExclusive&) = delete;

    CL::ChangeLog& Get() const;
};
