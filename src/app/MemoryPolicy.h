#pragma once

/// Makes the C library give large blocks back to the system as soon as they are freed. First thing in the
/// program.
void giveLargeBlocksBack();
