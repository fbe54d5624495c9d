#include "app/Translations.h"

#include <QCoreApplication>

namespace
{

const QString Folder = QStringLiteral(":/larkspool/translations");
const QString Name = QStringLiteral("larkspool");
const QString Separator = QStringLiteral("_");

// What the toolkit asks for by itself.
[[maybe_unused]] constexpr const char *ToolkitTexts[] = {
    //: Not shown. LTR for a language that is written from left to right, RTL for one from right to left.
    QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION"),
    //: What a screen reader may say of a button: the name of what can be done to it.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Press"),
    //: What a screen reader may say of a button: what pressing it does.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Triggers the action"),
    //: What a screen reader may say of a switch: the name of what can be done to it.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Toggle"),
    //: What a screen reader may say of a switch: what toggling it does.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Toggles the state"),
    //: What a screen reader may say of a control: the name of giving the keyboard to it.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "SetFocus"),
    //: What a screen reader may say of a control: what that does.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Sets the focus"),
    //: What a screen reader may say of a list of choices: the name of opening it.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "ShowMenu"),
    //: What a screen reader may say of a list of choices: what opening it does.
    QT_TRANSLATE_NOOP("QAccessibleActionInterface", "Shows the menu"),
};

} // namespace

Translations::Translations(const QLocale &locale)
{
    if (m_englishPlurals.load(Name + QStringLiteral("_en"), Folder))
        QCoreApplication::installTranslator(&m_englishPlurals);
    if (m_language.load(locale, Name, Separator, Folder))
        QCoreApplication::installTranslator(&m_language);
}
