#pragma once

#include <type_traits>
#include <utility>

namespace kelo {

/// Changes that consist of changes: only the outermost is announced, when all of it is made.
class ChangeNesting
{
public:
    /// Whether a change is being made.
    bool isRunning() const { return depth_ > 0; }

    /// Makes the change, calls `announce` unless the change is a part of another one, and returns
    /// what the change returned. A change that throws is not announced.
    template<class Change, class Announce>
    std::invoke_result_t<Change> run(Change &&change, Announce &&announce)
    {
        if constexpr (std::is_void_v<std::invoke_result_t<Change>>) {
            nested(std::forward<Change>(change));
            if (!isRunning()) announce();
        } else {
            auto result = nested(std::forward<Change>(change));
            if (!isRunning()) announce();
            return result;
        }
    }

private:
    class Level
    {
    public:
        explicit Level(int &depth) : depth_(depth) { ++depth_; }
        ~Level() { --depth_; }
        Level(const Level &) = delete;
        Level &operator=(const Level &) = delete;

    private:
        int &depth_;
    };

    template<class Change>
    std::invoke_result_t<Change> nested(Change &&change)
    {
        const Level level(depth_);
        return std::forward<Change>(change)();
    }

    int depth_ = 0;
};

} // namespace kelo
