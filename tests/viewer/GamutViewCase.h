// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <KVGamutView.h>

#include "ViewerCase.h"

/// A case with a viewer that is never shown, and a view attached to it.
class GamutViewCase : public ViewerCase
{
protected:
    void SetUp() override
    {
        ViewerCase::SetUp();
        view = std::make_unique<KVGamutView>(viewer.get());
    }

    void TearDown() override
    {
        view.reset();
        ViewerCase::TearDown();
    }

    static KVGamut::GamutObject computed(const fakevelmora::Gamut& gamut)
    {
        fakevelmora::onInit([gamut](const fakevelmora::InitCall&) { return gamut; });
        KVGamut::GamutObject result;
        result.init({}, KVGamut::Settings());
        fakevelmora::onInit({});
        return result;
    }

    static KVGamut::GamutObject computed(float volume = 1234.5f)
    {
        return computed(fakevelmora::tetrahedron(QStringLiteral("A"), volume));
    }

    /// Shows a gamut and waits until it is loaded.
    void showAndWait(const QString& id, const KVGamut::GamutObject& gamut = computed())
    {
        bool done = false;
        view->show(id, gamut, view.get(), [&done](const std::optional<KVProblem>& problem) {
            EXPECT_FALSE(problem);
            done = true;
        });
        ASSERT_TRUE(eventually([&done] { return done; }));
    }

    std::unique_ptr<KVGamutView> view;
};
