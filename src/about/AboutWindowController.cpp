#include "about/AboutWindowController.h"

#include "about/LinkButton.h"
#include "platform/Bundle.h"
#include "widgets/AutoresizingLayout.h"
#include "widgets/AuxiliaryWindow.h"
#include "widgets/ImageView.h"
#include "widgets/Label.h"

#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QUrl>

#include <algorithm>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize contentSize(360, 260);

const QString creditLine = u"Made by the Ambulet developers"_s;
const QString copyrightLine = u"Copyright © 2026 the Ambulet developers"_s;

QUrl website() {
    return QUrl(QStringLiteral(AMBULET_WEBSITE));
}

// The application's icon in its largest available size; null if the application has none.
QImage applicationIcon() {
    const QIcon icon = QApplication::windowIcon();
    QSize largest(0, 0);
    for (const QSize& size : icon.availableSizes()) {
        largest = largest.expandedTo(size);
    }
    return largest.isEmpty() ? QImage() : icon.pixmap(largest, 1).toImage();
}

}  // namespace

AboutWindowController& AboutWindowController::sharedController() {
    static AboutWindowController& controller = []() -> AboutWindowController& {
        auto* const made = new AboutWindowController(Bundle::main());
        made->moveToThread(QCoreApplication::instance()->thread());
        return *made;
    }();
    return controller;
}

AboutWindowController::AboutWindowController(const Bundle& bundle) : _bundle(bundle) {}

std::unique_ptr<QWidget> AboutWindowController::loadWindow() {
    auto window = std::make_unique<AuxiliaryWindow>(contentSize, AuxiliaryWindow::Sizing::Fixed);
    window->setWindowTitle(u"About "_s + _bundle.displayName());
    _window = window.get();
    return window;
}

void AboutWindowController::buildUI() {
    const int width = contentSize.width();
    AutoresizingLayout& layout = _window->content();
    const auto add = [&layout](auto view, const QString& name, const QRect& frame) {
        auto* const added = view.get();
        added->setObjectName(name);
        layout.add(std::move(view), frame);
        return added;
    };
    const auto addLabel = [&](const QString& name, FramedLabel made) {
        add(std::move(made.label), name, made.frame);
    };

    add(std::make_unique<ImageView>(), u"icon"_s, {(width - 64) / 2, 180, 64, 64})
        ->setImage(applicationIcon(), _bundle.displayName() + u" icon"_s);
    addLabel(u"name"_s, centeredLabel(_bundle.displayName(), systemFont(16, QFont::Bold),
                                      LabelColor::Label, 146, 22, width));
    addLabel(
        u"version"_s,
        centeredLabel(u"Version "_s +
                          _bundle.information(u"CFBundleShortVersionString"_s).value_or(QString()),
                      systemFont(11), LabelColor::SecondaryLabel, 124, 16, width));
    addLabel(u"credit"_s,
             centeredLabel(creditLine, systemFont(11), LabelColor::Label, 80, 16, width));
    const LinkButton* const link =
        add(std::make_unique<LinkButton>(website().host(), systemFont(11)), u"link"_s,
            {0, 50, width, 16});
    connect(link, &LinkButton::clicked, this, &AboutWindowController::openWebsite);
    addLabel(u"copyright"_s, centeredLabel(copyrightLine, systemFont(10), LabelColor::TertiaryLabel,
                                           16, 14, width));
}

AboutWindowController::FramedLabel AboutWindowController::centeredLabel(const QString& text,
                                                                        const QFont& font,
                                                                        LabelColor color, int y,
                                                                        int h, int width) {
    FramedLabel made{std::make_unique<Label>(text, font, color), {20, y, width - 40, h}};
    made.label->setAlignment(Qt::AlignCenter);
    return made;
}

void AboutWindowController::openWebsite() {
    QDesktopServices::openUrl(website());
}

void AboutWindowController::showWindow() {
    WindowController::showWindow();
    _window->center();
}

}  // namespace ambulet
