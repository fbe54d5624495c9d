#pragma once

#include <memory>
#include <utility>

/// A member of an object that schedules work for later: closures made by `guard` do nothing once the object
/// is gone. Main thread only; declare it last, so that it ends before the members that the closures use.
class Lifetime
{
public:
    template<class Function>
    auto guard(Function function) const
    {
        return [alive = std::weak_ptr<int>(m_token), function = std::move(function)](auto &&...arguments) {
            if (!alive.expired())
                function(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    std::shared_ptr<int> m_token = std::make_shared<int>(0);
};
