#pragma once

#include "automation/failure.h"
#include "platform/clock.h"
#include "platform/pictures.h"
#include "platform/system_info.h"
#include "platform/timers.h"
#include "tests/fakes/journal.h"

#include <gtest/gtest.h>

namespace talvix {

/// What every `Clock`, `SystemInfo`, `Timers` and `Pictures` keeps to. A rig offers clock, system,
/// timers and pictures, and Post(step), which queues an event of the thread's own.
template <typename Rig>
class SystemContract : public testing::Test {
protected:
    Rig rig;
};
TYPED_TEST_SUITE_P(SystemContract);

TYPED_TEST_P(SystemContract, TheClockTellsTodayAndNeverGoesBack) {
    const Date first = this->rig.clock.Now();
    EXPECT_GT(first.days, 36526); // the year 2000
    EXPECT_LT(first.days, 2958466);
    EXPECT_LE(first.days, this->rig.clock.Now().days);
}

TYPED_TEST_P(SystemContract, TheSystemIsOfTheNtLine) {
    const auto version = this->rig.system.Version();
    ASSERT_TRUE(version);
    EXPECT_EQ(version->platform, 2U);
    EXPECT_GE(version->major, 5U);
    EXPECT_GE(this->rig.system.PixelsPerInch(), 72);
}

TYPED_TEST_P(SystemContract, EventsWaitUntilTheyAreRunAndRunOnce) {
    int runs = 0;
    this->rig.Post([&] { ++runs; });
    EXPECT_EQ(runs, 0);
    this->rig.timers.RunPending();
    EXPECT_EQ(runs, 1);
    this->rig.timers.RunPending();
    EXPECT_EQ(runs, 1);
}

TYPED_TEST_P(SystemContract, AnEventMayRunTheOthersItself) {
    Lines order;
    this->rig.Post([&] {
        order.emplace_back(u"first begins");
        this->rig.Post([&] { order.emplace_back(u"second"); });
        this->rig.timers.RunPending();
        order.emplace_back(u"first ends");
    });
    this->rig.timers.RunPending();
    EXPECT_EQ(order, (Lines{u"first begins", u"second", u"first ends"}));
}

TYPED_TEST_P(SystemContract, PicturesAreKeptObjectsAndOthersAreRefused) {
    for (const std::int32_t number : {kMissingFilePicture, kLinkPicture}) {
        const Value picture = this->rig.pictures.Picture(number);
        EXPECT_FALSE(picture.IsNothing());
        EXPECT_EQ(picture, this->rig.pictures.Picture(number));
    }
    EXPECT_THROW(this->rig.pictures.Picture(0), Failure);
    EXPECT_THROW(this->rig.pictures.Picture(3), Failure);
}

REGISTER_TYPED_TEST_SUITE_P(SystemContract, TheClockTellsTodayAndNeverGoesBack,
                            TheSystemIsOfTheNtLine, EventsWaitUntilTheyAreRunAndRunOnce,
                            AnEventMayRunTheOthersItself,
                            PicturesAreKeptObjectsAndOthersAreRefused);

} // namespace talvix
