#include "PictureReference.h"

#include "PictureComparison.h"

#include <QDir>

#include <gtest/gtest.h>

namespace pictures
{
namespace
{

/// As small as it can be: it may become a reference.
void save(const QImage &picture, const QString &folder, const QString &name)
{
    const QDir seen(QStringLiteral(SEEN_PICTURES "/") + folder);
    EXPECT_TRUE(seen.mkpath(QStringLiteral(".")));
    constexpr int Smallest = 0;
    EXPECT_TRUE(picture.save(seen.filePath(name + QStringLiteral(".png")), "png", Smallest));
}

} // namespace

QString scaleName()
{
    return qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1"));
}

void expectAsReference(
    const QImage &seen, const QString &folder, const QString &state, Appearance::ColorScheme scheme)
{
    const bool isDark = scheme == Appearance::ColorScheme::Dark;
    const QString name =
        QStringLiteral("%1-%2-%3x")
            .arg(state, isDark ? QStringLiteral("dark") : QStringLiteral("light"), scaleName());
    save(seen, folder, name);
    const QString reference = QStringLiteral(EXPECTED_PICTURES "/%1/%2.png").arg(folder, name);
    const QImage expected(reference);
    ASSERT_FALSE(expected.isNull()) << reference.toStdString() << " is missing";
    const Comparison comparison = compare(expected, seen);
    if (comparison.isSame())
        return;
    if (!comparison.map.isNull())
        save(comparison.map, folder, name + QStringLiteral("-difference"));
    ADD_FAILURE() << name.toStdString() << ": " << 100 * comparison.differentShare
                  << " % of the pixels differ by more than " << ChannelTolerance
                  << " of 255 in a channel; allowed are " << 100 * LargestShare << " %. See "
                  << SEEN_PICTURES;
}

} // namespace pictures
