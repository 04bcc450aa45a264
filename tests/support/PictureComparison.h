#pragma once

#include <QImage>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace kelo::test {

/// How far two pictures of the same scene may differ: software rasterisers differ that much between
/// processors, and no more.
inline constexpr int channelTolerance = 3; ///< of 255
inline constexpr double pixelTolerance = 0.001;

/// What comparing two pictures of the same size found.
struct PictureDifference
{
    std::size_t pixelCount = 0;
    std::size_t differentPixelCount = 0; ///< some channel differs by more than channelTolerance
    int largestDifference = 0;           ///< of any channel of any pixel
    /// Black where the pictures agree; elsewhere the differences of the channels, eight times
    /// enlarged so that they can be seen.
    QImage picture;

    bool isSmall() const
    {
        return static_cast<double>(differentPixelCount) <=
               pixelTolerance * static_cast<double>(pixelCount);
    }
};

/// Both pictures must have the same size.
PictureDifference differenceOfPictures(const QImage &actual, const QImage &expected);

/// Success when the picture is the one that is kept under this name. Otherwise the failure names
/// the two files that it leaves in the build tree: the picture itself and the difference picture.
/// With the environment variable KELO_KEEP_PICTURES set to a folder, the picture is written there
/// instead and the comparison fails, so that nobody takes it for a test.
testing::AssertionResult isThePictureKeptAs(const std::string &name, const QImage &actual);
/// The same, but never keeps: for pictures that are wrong on purpose.
testing::AssertionResult isTheKeptPicture(const std::string &name, const QImage &actual);

} // namespace kelo::test
