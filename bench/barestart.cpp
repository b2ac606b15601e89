// The least that a Qt program with a splash is: the product's picture, a main window of the product's size
// with nothing in it, shown in the product's order. What the product's start costs is told beside it.

#include <QApplication>
#include <QMainWindow>
#include <QPixmap>
#include <QSplashScreen>

int main(int argc, char *argv[])
{
    constexpr QSize kSize(1160, 500);
    const QApplication application(argc, argv);
    const QPixmap picture(QStringLiteral(":/pictures/zrtss1.jpg"));
    QSplashScreen splash(picture);
    splash.show();
    QCoreApplication::processEvents();
    QMainWindow window;
    window.resize(kSize);
    window.show();
    splash.finish(&window);
    return QApplication::exec();
}
