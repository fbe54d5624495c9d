#pragma once

#include <chrono>
#include <functional>

/// Runs the event loop until the condition holds; false when it does not within the deadline.
bool waitUntil(
    const std::function<bool()> &condition, std::chrono::milliseconds deadline = std::chrono::seconds(10));
