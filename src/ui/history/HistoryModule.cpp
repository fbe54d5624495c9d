#include "ui/history/HistoryModule.h"

// Made by the build, one for each module.
extern void qml_register_types_Larkspool_History();
extern void qml_register_types_Larkspool_Style();

void registerHistoryModule()
{
    qml_register_types_Larkspool_Style();
    qml_register_types_Larkspool_History();
}
