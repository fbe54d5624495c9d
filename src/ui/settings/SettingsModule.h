#pragma once

/// Makes the QML modules of the settings known to the QML engine; a static library's would not be linked in
/// by themselves. Once, before the first engine loads them.
void registerSettingsModule();
