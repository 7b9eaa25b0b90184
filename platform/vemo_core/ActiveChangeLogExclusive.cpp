#include <vemo_core/ActiveChangeLogExclusive.h>

#include "ActiveLog.h"

ActiveChangeLogExclusive::ActiveChangeLogExclusive() {
    CL::ActiveLog::Instance().Mutex().lock();
}

ActiveChangeLogExclusive::~ActiveChangeLogExclusive() {
    CL::ActiveLog::Instance().Mutex().unlock();
}

// A member so that nobody gets at the log without holding it.
CL::ChangeLog& ActiveChangeLogExclusive::Get() const {
    return CL::ActiveLog::Instance();
}
