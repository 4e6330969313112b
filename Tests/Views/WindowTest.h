// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QQuickItem>
#include <string>
#include <vector>

#include "Tests/Velmora/Coordination/ModelWorld.h"
#include "Tests/Views/ApprovedPicture.h"
#include "Tests/Views/ViewTest.h"
#include "Velmora/Presentation/LaunchFlashController.h"
#include "Velmora/Presentation/OnboardingWindowController.h"
#include "Velmora/Presentation/SettingsWindowController.h"
#include "Velmora/Presentation/UpdateWindowController.h"

namespace velmora::test {

/// The windows of one program on a desktop of recording parts, without a display.
class WindowTest : public ViewTest {
  protected:
    static constexpr Rect screenFrame{0, 0, 1600, 1000};

    WindowTest() {
        world.settings.setBoolean("onboardingCompleted", true);
        world.start();
        settings.attach(*world.model);
        onboarding.attach(*world.model);
        world.journal.clear();
    }

    /// The first item of this name in a view; fails the test where there is none.
    static QQuickItem& named(QQuickItem& root, const QString& name) {
        const QList<QQuickItem*> found = items(root, name);
        if (found.isEmpty()) {
            ADD_FAILURE() << "no item is named " << name.toStdString();
            return root;
        }
        return *found.front();
    }

    /// What is to be read in an item now, in the order in which it stands.
    static std::vector<std::string> texts(const QQuickItem& root);

    static void clickOn(QQuickItem& item);
    static void clickAt(QQuickItem& item, QPointF position);
    static void press(QWindow& window, int key, Qt::KeyboardModifiers modifiers = {});

    /// What a window shows once it has come to the screen and every animation in it has ended.
    static QImage settledPicture(QQuickWindow& window);

    /// Compares what a window shows then with the approved pictures, in both appearances.
    void compare(QQuickWindow& window, const std::string& name);

    testing::ModelWorld world;
    SettingsWindowController settings{views, screens, world.shell, world.settings};
    OnboardingWindowController onboarding{views, screens};
    UpdateWindowController updates{views, screens, world.shell};
    LaunchFlashController flash{world.clock, screens, views};
};

}  // namespace velmora::test
