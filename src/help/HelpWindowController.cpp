#include "help/HelpWindowController.h"

#include "help/HelpPages.h"
#include "platform/Bundle.h"
#include "widgets/AutoresizingLayout.h"
#include "widgets/AuxiliaryWindow.h"
#include "widgets/Button.h"
#include "widgets/ImageView.h"
#include "widgets/Label.h"

#include <QCoreApplication>
#include <QThread>

namespace ambulet {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize contentSize(720, 740);
constexpr QSize minimumFrameSize(400, 400);

std::unique_ptr<Button> makeButton(const QString& title) {
    auto button = std::make_unique<Button>(title);
    button->setFont(systemFont(13));
    button->setAutoDefault(true);  // Return presses it, too
    return button;
}

}  // namespace

HelpWindowController& HelpWindowController::sharedController() {
    static HelpWindowController& controller = []() -> HelpWindowController& {
        auto* const made = new HelpWindowController(Bundle::main());
        made->moveToThread(QCoreApplication::instance()->thread());
        return *made;
    }();
    return controller;
}

HelpWindowController::HelpWindowController(const Bundle& bundle) : _bundle(bundle) {}

std::unique_ptr<QWidget> HelpWindowController::loadWindow() {
    auto window =
        std::make_unique<AuxiliaryWindow>(contentSize, AuxiliaryWindow::Sizing::Resizable);
    window->setMinimumFrameSize(minimumFrameSize);
    window->setWindowTitle(u"Getting Started with "_s + _bundle.displayName());
    _window = window.get();
    return window;
}

void HelpWindowController::buildUI() {
    using enum AutoresizingLayout::Horizontally;
    using enum AutoresizingLayout::Vertically;
    const int width = contentSize.width();
    const int height = contentSize.height();
    AutoresizingLayout& layout = _window->content();

    const auto add = [&layout](auto view, const QString& name, const QRect& frame,
                               AutoresizingLayout::Horizontally horizontally,
                               AutoresizingLayout::Vertically vertically) {
        auto* const added = view.get();
        added->setObjectName(name);
        layout.add(std::move(view), frame, horizontally, vertically);
        return added;
    };
    _prevButton = add(makeButton(u"← Previous"_s), u"prevButton"_s, {16, 16, 110, 28}, RightMargin,
                      TopMargin);
    _nextButton = add(makeButton(u"Next →"_s), u"nextButton"_s, {width - 106, 16, 90, 28},
                      LeftMargin, TopMargin);
    _pageIndicator =
        add(std::make_unique<Label>(QString(), systemFont(11), LabelColor::SecondaryLabel),
            u"pageIndicator"_s, {134, 22, width - 248, 16}, Width, TopMargin);
    _captionField = add(std::make_unique<Label>(QString(), systemFont(13), LabelColor::Label),
                        u"captionField"_s, {16, 52, width - 32, 80}, Width, TopMargin);
    _imageView = add(std::make_unique<ImageView>(), u"imageView"_s,
                     {16, 140, width - 32, height - 156}, Width, Height);

    _pageIndicator->setAlignment(Qt::AlignCenter);
    _captionField->setWordWrap(true);
    _captionField->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    connect(_prevButton, &Button::clicked, this, &HelpWindowController::prevPage);
    connect(_nextButton, &Button::clicked, this, &HelpWindowController::nextPage);
}

void HelpWindowController::updateForPage(qsizetype page) {
    window();
    _currentPage = page;
    const auto row = static_cast<std::size_t>(page);
    const std::optional<QString> path = imagePath(page);
    _imageView->setImage(path ? QImage(*path) : QImage(), helpImageDescriptions.at(row).toString());
    _captionField->setText(helpCaptions.at(row).toString());
    _pageIndicator->setText(u"%1 of %2"_s.arg(page + 1).arg(helpPageCount));
    _prevButton->setVisible(page != 0);
    _nextButton->setText(page == helpPageCount - 1 ? u"Done"_s : u"Next →"_s);
}

std::optional<QString> HelpWindowController::imagePath(qsizetype page) const {
    const QString name = helpImageNames.at(static_cast<std::size_t>(page)).toString();
    const QString type = helpImageTypes.at(static_cast<std::size_t>(page)).toString();
    const std::optional<QString> path = _bundle.resourcePath(name, type, u"Help"_s);
    return path ? path : _bundle.resourcePath(name, type);
}

void HelpWindowController::nextPage() {
    if (_currentPage >= helpPageCount - 1) {
        _window->close();
    } else {
        updateForPage(_currentPage + 1);
    }
}

void HelpWindowController::prevPage() {
    if (_currentPage >= 1) {
        updateForPage(_currentPage - 1);
    }
}

void HelpWindowController::showWindow() {
    updateForPage(0);
    WindowController::showWindow();
    _window->center();
}

}  // namespace ambulet
