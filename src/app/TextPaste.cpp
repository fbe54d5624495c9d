#include "app/TextPaste.h"

#include "base/Console.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace
{

/// More than this would hold the window up while it is laid out; in bytes.
constexpr qsizetype LargestPaste = 256 * 1024;

/// The text field that has the focus; null when something else has it, or a field that is only read.
QObject *focusedTextField()
{
    QObject *const focused = QGuiApplication::focusObject();
    if (!focused)
        return nullptr;
    QInputMethodQueryEvent query(Qt::ImEnabled);
    QCoreApplication::sendEvent(focused, &query);
    return query.value(Qt::ImEnabled).toBool() ? focused : nullptr;
}

} // namespace

TextPaste::TextPaste(const Pasteboard &pasteboard)
    : m_pasteboard(pasteboard)
{
    qGuiApp->installEventFilter(this);
}

bool TextPaste::eventFilter(QObject *watched, QEvent *event)
{
    // A window passes its events on to its items, which come by here as well.
    if (!watched->isWindowType())
        return false;
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease)
        return static_cast<QMouseEvent *>(event)->button() == Qt::MiddleButton;
    if (event->type() != QEvent::KeyPress || !static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste))
        return false;
    // What a field of this program has copied a moment ago is not on the pasteboard yet, and asks nobody.
    if (QGuiApplication::clipboard()->ownsClipboard())
        return false;
    QObject *const field = focusedTextField();
    if (!field)
        return false;
    const QByteArray text = m_pasteboard.data(PasteboardType::String).value_or(QByteArray());
    if (text.size() > LargestPaste) {
        consoleLine(QStringLiteral("[Larkspool] The text on the clipboard is too large for a text field"));
        return true;
    }
    QInputMethodEvent typing;
    typing.setCommitString(QString::fromUtf8(text));
    QCoreApplication::sendEvent(field, &typing);
    return true;
}
