#pragma once

#include <gtest/gtest.h>

#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace kelo::test {

/// What `action` returns in a child process of an ordinary user. The superuser, as which containers
/// run tests, may read every file whatever its permissions; so files that nobody may read are
/// tested there too.
template<class Action>
std::string resultWithoutPrivileges(Action &&action)
{
    constexpr unsigned nobody = 65534; // the user that owns nothing
    int ends[2];
    if (::pipe(ends) != 0) return "no pipe";
    const pid_t child = ::fork();
    if (child < 0) return "no child process";
    if (child == 0) {
        ::close(ends[0]);
        std::string result = "the privileges could not be dropped";
        if (::geteuid() != 0 || (::setgid(nobody) == 0 && ::setuid(nobody) == 0)) result = action();
        std::size_t written = 0;
        for (ssize_t now;
             written < result.size() &&
             (now = ::write(ends[1], result.data() + written, result.size() - written)) > 0;)
            written += static_cast<std::size_t>(now);
        ::_exit(0);
    }
    ::close(ends[1]);
    std::string result;
    char bytes[256];
    for (ssize_t got; (got = ::read(ends[0], bytes, sizeof bytes)) > 0;)
        result.append(bytes, static_cast<std::size_t>(got));
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return result;
}

} // namespace kelo::test
