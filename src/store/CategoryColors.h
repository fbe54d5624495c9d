#pragma once

#include <QString>

#include <vector>

/// The colours that a category can be given.
namespace CategoryColors
{

struct Entry {
    QString name;
    QString hex; ///< "#" and six hexadecimal digits
};

/// The twelve colours in the order of display.
const std::vector<Entry> &palette();

} // namespace CategoryColors
