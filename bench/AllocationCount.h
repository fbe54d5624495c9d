#pragma once

#include <cstddef>

/// How many blocks of memory the process has asked for so far, by operator new.
size_t allocationCount();
