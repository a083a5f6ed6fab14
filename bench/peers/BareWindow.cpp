// bare_window: shows a window with the default size of the application's, and with about as many
// widgets, which are Qt's own and do nothing. tools/bench compares the start of the application
// with the start of this program.

#include <QApplication>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(880, 720);
    for (const char* title : {"First", "Second", "Third"}) {
        window.menuBar()->addMenu(QLatin1String(title))->addAction(QStringLiteral("Item"));
    }
    auto* const content = new QWidget;
    auto* const layout = new QGridLayout(content);
    layout->addWidget(new QPushButton(QStringLiteral("Button")), 0, 0);
    layout->addWidget(new QLineEdit, 0, 1);
    for (int label = 0; label < 8; ++label) {
        layout->addWidget(new QLabel(QStringLiteral("Label")), 1 + label / 2, label % 2);
    }
    auto* const table = new QTableWidget(0, 4);
    table->setHorizontalHeaderLabels({QStringLiteral("One"), QStringLiteral("Two"),
                                      QStringLiteral("Three"), QStringLiteral("Four")});
    table->verticalHeader()->hide();
    layout->addWidget(table, 5, 0, 1, 2);
    window.setCentralWidget(content);
    window.show();
    return QApplication::exec();
}
