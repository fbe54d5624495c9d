#pragma once

#include <QImage>

/// How a picture that is seen compares with the one that is expected.
namespace pictures
{

/// A pixel is a different one when one of its channels, of 256 steps, differs by more than this.
constexpr int ChannelTolerance = 12;
/// Pictures are different when more than this share of their pixels is.
constexpr double LargestShare = 0.0002;

struct Comparison {
    /// Of the pixels, 0 to 1; 1 when the pictures are not equally large or one is not there.
    double differentShare = 1;
    /// The expected picture, pale, with the different pixels in red; null when there is nothing to compare.
    QImage map;

    bool isSame() const { return differentShare <= LargestShare; }
};

Comparison compare(const QImage &expected, const QImage &seen);

} // namespace pictures
