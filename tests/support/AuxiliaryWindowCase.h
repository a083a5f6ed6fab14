#pragma once

#include "platform/Bundle.h"
#include "widgets/Label.h"

#include <QApplication>
#include <QRect>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QWidget>
#include <gtest/gtest.h>

#include <future>
#include <vector>

namespace ambulet {

/// A test fixture with its own controller, which reads the application's bundle.
template <typename Controller>
class AuxiliaryWindowCase : public testing::Test {
  protected:
    template <typename View>
    View& view(const char* name) {
        return *controller.window()->template findChild<View*>(QString::fromLatin1(name));
    }

    /// A view's frame, with the origin at the content's lower left corner.
    QRect frame(const char* name) {
        const QRect geometry = view<QWidget>(name).geometry();
        const int bottom = controller.window()->height() - geometry.y() - geometry.height();
        return {geometry.x(), bottom, geometry.width(), geometry.height()};
    }

    QString text(const char* name) { return view<Label>(name).text(); }

    void show() {
        controller.showWindow();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(controller.window()));
    }

    void expectCentered() {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QRect outer = controller.window()->frameGeometry();
        EXPECT_EQ(outer.left(), screen.left() + (screen.width() - outer.width()) / 2);
        EXPECT_EQ(outer.top(), screen.top() + (screen.height() - outer.height()) / 4);
    }

    void expectColor(const char* name, LabelColor color) {
        EXPECT_EQ(view<Label>(name).palette().color(QPalette::WindowText),
                  labelColor(color, QApplication::palette()))
            << name;
    }

    QTemporaryDir folder;
    Controller controller{Bundle::main()};
};

/// Expects that threads that ask for the shared controller at the same time get the same one, that
/// it belongs to the calling thread, and that its window can be shown.
template <typename Controller>
void expectOneSharedController() {
    std::vector<Controller*> seen(8);
    {
        std::vector<std::future<void>> threads;
        for (auto& entry : seen) {
            threads.push_back(std::async(std::launch::async,
                                         [&entry] { entry = &Controller::sharedController(); }));
        }
    }
    for (const auto* const controller : seen) {
        EXPECT_EQ(controller, &Controller::sharedController());
    }
    EXPECT_EQ(seen.front()->thread(), QThread::currentThread());
    seen.front()->showWindow();
    EXPECT_TRUE(seen.front()->window()->isVisible());
    seen.front()->window()->close();
}

}  // namespace ambulet
