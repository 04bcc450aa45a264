#pragma once

#include <gtest/gtest.h>

#include <string>

namespace kelo::test {

/// What `action` writes to standard error.
template<class Action>
std::string standardErrorOf(Action &&action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// What `action` writes to standard output.
template<class Action>
std::string standardOutputOf(Action &&action)
{
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
}

} // namespace kelo::test
