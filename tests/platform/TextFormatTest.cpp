#include "platform/TextFormat.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {

TEST(TextFormatTest, TruncatesTimesAndReplacesInvalidOnes) {
    EXPECT_EQ(formattedDuration(65.99), QStringLiteral("1:05"));
    EXPECT_EQ(formattedDuration(8), QStringLiteral("0:08"));
    EXPECT_EQ(formattedDuration(3725), QStringLiteral("1:02:05"));
    EXPECT_EQ(formattedSubclipTime(41.2), QStringLiteral("00:41.20"));
    EXPECT_EQ(formattedSubclipTime(6000.019), QStringLiteral("100:00.01"));
    EXPECT_EQ(formattedTransportTime(3661.9), QStringLiteral("01:01:01"));
    for (const double invalid : {-0.5, std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(formattedDuration(invalid), QString(QChar(0x2014)));
        EXPECT_EQ(formattedSubclipTime(invalid), QStringLiteral("00:00"));
        EXPECT_EQ(formattedTransportTime(invalid), QStringLiteral("00:00:00"));
    }
}

} // namespace
} // namespace corvane
