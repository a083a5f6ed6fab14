// bare_window: shows an empty window as large as the program's, and nothing else.

#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(720, 640);
    window.show();
    return QApplication::exec();
}
