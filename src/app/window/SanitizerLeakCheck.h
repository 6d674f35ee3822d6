#pragma once

// In builds with AddressSanitizer only (tools/dev.sh asan); elsewhere these do
// nothing. LeakSanitizer looks for leaks at the very end of the process, after
// Qt's plugins and the OpenGL driver are unloaded: their allocations then show
// as an unknown module that no suppression can name. checkNow() runs the check
// while they are still loaded (call it before QApplication goes).
#if defined(__SANITIZE_ADDRESS__)
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

} // namespace SanitizerLeakCheck
