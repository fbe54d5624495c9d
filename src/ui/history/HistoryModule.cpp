#include "ui/history/HistoryModule.h"

#include <QtGlobal>

// Made by the build, one for each module; a registration at start-up calls them.
extern void qml_register_types_Larkspool_History();
extern void qml_register_types_Larkspool_Style();

void registerHistoryModule()
{
    const volatile auto style = &qml_register_types_Larkspool_Style;
    const volatile auto history = &qml_register_types_Larkspool_History;
    Q_UNUSED(style)
    Q_UNUSED(history)
}
