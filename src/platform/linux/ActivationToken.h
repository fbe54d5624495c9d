#pragma once

#include <QString>

/// Lets the next window that asks for the focus have it: a Wayland compositor wants a proof that it was the
/// user's doing (the protocol "xdg-activation"), and the toolkit takes that from $XDG_ACTIVATION_TOKEN when a
/// window is to be activated, once. Without effect where no such proof is wanted.
///
/// To be called before each activation that the user has asked for: an empty token withdraws one of before
/// that nobody has taken, which would be out of date. Main thread only.
void offerActivationToken(const QString &token);
