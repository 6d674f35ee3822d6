#pragma once

#include <QtGlobal>

// Waits of the tests that watch real players, pages and processes. Sanitizer
// runs slow every process down several times; they set
// TAVRO_TEST_TIME_FACTOR (tools/dev.sh asan) and the waits stretch with it.
namespace TestTiming {

inline int scaled(int milliseconds)
{
    const int factor = qEnvironmentVariableIntValue("TAVRO_TEST_TIME_FACTOR");
    return milliseconds * (factor > 1 ? factor : 1);
}

} // namespace TestTiming
