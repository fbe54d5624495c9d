#include "ui/settings/SettingsModule.h"

#include <QtGlobal>

// Made by the build, one for each module; a registration at start-up calls them.
extern void qml_register_types_Larkspool_Settings();

void registerSettingsModule()
{
    const volatile auto settings = &qml_register_types_Larkspool_Settings;
    Q_UNUSED(settings)
}
