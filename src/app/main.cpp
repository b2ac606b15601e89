#include "app/appenvironment.h"
#include "app/framework_ctrllr.h"
#include "app/framework_view.h"
#include "app/resources.h"
#include "base/gui/fonts.h"
#include "base/timesource.h"

#include <QApplication>
#include <QPixmap>
#include <QSplashScreen>

int main(int argc, char *argv[])
{
    QFont font;
    // No window draws with OpenGL. Otherwise the first one would load the driver, which takes nearly half of
    // the start.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    QApplication application(argc, argv);
    initResources();
    fonts::installSubstitutions();

    const QPixmap splashPixmap(QStringLiteral(":/pictures/zrtss1.jpg"));
    QSplashScreen splash(splashPixmap);
    splash.show();
    font = QApplication::font();
    QCoreApplication::processEvents(); // once, on purpose, so that the splash paints

    // Set behind the application's construction on purpose: the program scales nothing by itself.
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    qputenv("QT_AUTO_SCREEN_SCALE_FACTOR", "0.0");
    qputenv("QT_SCALE_FACTOR", "1.0");
    QApplication::setFont(fonts::text(font));

    SystemTime time;
    Framework_Ctrllr controller(productEnvironment(time));
    splash.finish(controller.mainWindow());
    return QApplication::exec();
}
