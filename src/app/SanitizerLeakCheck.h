#pragma once

// In builds with AddressSanitizer only (tools/dev.sh asan); elsewhere these do
// nothing. LeakSanitizer looks for leaks at the very end of the process, after
// Qt's plugins and the OpenGL driver are unloaded: their allocations then show
// as an unknown module that no suppression can name. These run the check while
// they are still loaded.
#if defined(__SANITIZE_ADDRESS__)
#include <cstdlib>
#include <sanitizer/lsan_interface.h>
#endif

namespace SanitizerLeakCheck {

// Checks now (the check runs once per process).
inline void checkNow()
{
#if defined(__SANITIZE_ADDRESS__)
    __lsan_do_leak_check();
#endif
}

// Checks when the process leaves through exit() (--help, --version), before
// the statics made so far are destroyed. Call it after QApplication is made.
inline void checkAtExit()
{
#if defined(__SANITIZE_ADDRESS__)
    std::atexit([] { __lsan_do_leak_check(); });
#endif
}

} // namespace SanitizerLeakCheck
