#pragma once

/// Makes the C library give large blocks back to the system as soon as they are freed. First thing in the
/// program.
void giveLargeBlocksBack();

/// Gives what is free between blocks in use back to the system as well. Takes a few milliseconds.
void giveFreeMemoryBack();
