#pragma once

#include <QString>

/// Lets the next window that asks for the focus have it: a Wayland compositor wants a proof that it was the
/// user's doing (the protocol "xdg-activation"), and the toolkit takes that from $XDG_ACTIVATION_TOKEN when a
/// window is to be activated, once. Without effect where no such proof is wanted.
///
/// To be called before each activation that the user has asked for, and with an empty token after it: one
/// that nobody has taken would be out of date, and programs that are started would get it. Main thread only.
void offerActivationToken(const QString &token);
