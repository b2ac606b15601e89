#include "controller/powersettingsdialog.h"
#include "support/childbyname.h"

#include <QApplication>
#include <QLabel>
#include <QtTest>

/// The warning icon of the power settings where the screen has twice as many pixels each way.
class TstWarningIconFineScreen : public QObject
{
    Q_OBJECT

private slots:
    void iconIs64By64OnTheScreen_data();
    void iconIs64By64OnTheScreen();
};

void TstWarningIconFineScreen::iconIs64By64OnTheScreen_data()
{
    QTest::addColumn<QString>("style");
    QTest::newRow("Fusion") << "Fusion";
    QTest::newRow("Windows") << "Windows";
}

void TstWarningIconFineScreen::iconIs64By64OnTheScreen()
{
    QFETCH(QString, style);
    QVERIFY(QApplication::setStyle(style));
    const PowerSettingsDialog dialog;
    QCOMPARE(dialog.devicePixelRatioF(), 2.0);
    const auto *label = childByName<QLabel>(&dialog, "label_Warning");
    const QPixmap picture = label->pixmap(Qt::ReturnByValue);
    QCOMPARE(picture.devicePixelRatio(), 2.0);
    QCOMPARE(picture.size(), QSize(128, 128));
    QCOMPARE(label->sizeHint(), QSize(64, 64));
}

int main(int argc, char *argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");                             // read when the application begins
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling); // as the program does
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QApplication application(argc, argv);
    TstWarningIconFineScreen test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_warningicon_finescreen.moc"
