#pragma once

#include "platform/Pasteboard.h"

#include <QObject>

/// Pasting by key into the program's own text fields, from the pasteboard, where the text is already. The
/// toolkit would ask the program that owns the clipboard, and wait for it. For the same reason a click with
/// the middle button does nothing: it would ask the owner of PRIMARY. Main thread only.
class TextPaste : public QObject
{
public:
    /// Begins at once, by an event filter on the application object. The pasteboard must outlive it.
    explicit TextPaste(const Pasteboard &pasteboard);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const Pasteboard &m_pasteboard;
};
