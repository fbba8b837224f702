// SPDX-License-Identifier: Apache-2.0
#include "model/pictures/BodyLooks.h"

#include "../support/BuiltInGamut.h"

#include <gtest/gtest.h>

namespace {

KVGamut::GamutObject gamutOf(const char* name)
{
    return kvtest::builtInGamut(name, 9);
}

using Looks = QList<BodyLook>;

} // namespace

TEST(BodyLooks, theInnermostIsSolid)
{
    const auto small = gamutOf("sRGB"), middle = gamutOf("AdobeRGB"), large = gamutOf("ProPhoto");
    EXPECT_EQ(bodyLooks({small}), Looks{BodyLook::Solid});
    EXPECT_EQ(bodyLooks({small, middle}), (Looks{BodyLook::Solid, BodyLook::Translucent}));
    EXPECT_EQ(bodyLooks({small, middle, large}),
              (Looks{BodyLook::Solid, BodyLook::Translucent, BodyLook::Lines}));
}

TEST(BodyLooks, doNotDependOnTheOrder)
{
    const auto small = gamutOf("sRGB"), middle = gamutOf("AdobeRGB"), large = gamutOf("ProPhoto");
    EXPECT_EQ(bodyLooks({large, small, middle}),
              (Looks{BodyLook::Lines, BodyLook::Solid, BodyLook::Translucent}));
    EXPECT_EQ(bodyLooks({middle, large}), (Looks{BodyLook::Solid, BodyLook::Translucent}));
}

TEST(BodyLooks, ofEqualGamutsTheFirstIsSolid)
{
    const auto gamut = gamutOf("sRGB");
    EXPECT_EQ(bodyLooks({gamut, gamut}), (Looks{BodyLook::Solid, BodyLook::Translucent}));
}

TEST(BodyLooks, ofEmptyGamutsAreSolid)
{
    EXPECT_EQ(bodyLooks({}), Looks());
    EXPECT_EQ(bodyLooks({KVGamut::GamutObject(), gamutOf("sRGB")}),
              (Looks{BodyLook::Solid, BodyLook::Solid}));
}
