#pragma once

#include "platform/Appearance.h"

#include <QImage>

namespace pictures
{

/// That of this process.
QString scaleName();

/// Compares a picture that is seen with docs/pictures/<folder>/<state>-<dark|light>-<scale>x.png, and fails
/// when it is another one. What is seen is saved under the same name in the build folder, beside this test,
/// and what is different as well.
void expectAsReference(
    const QImage &seen, const QString &folder, const QString &state, Appearance::ColorScheme scheme);

} // namespace pictures
