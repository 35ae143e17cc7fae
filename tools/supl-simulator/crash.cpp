#include "crash.h"

#include <QtGlobal>

#include <cstdlib>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

void crash()
{
#ifdef Q_OS_UNIX
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
#endif
#ifdef Q_OS_LINUX
    // The limit has no effect where a program collects the dumps.
    prctl(PR_SET_DUMPABLE, 0);
#endif
#ifdef Q_OS_WIN
    _set_abort_behavior(0, _WRITE_ABORT_MSG | _CALL_REPORTFAULT);
#endif
    std::abort();
}
