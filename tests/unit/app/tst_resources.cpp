#include "app/resources.h"

#include <QImage>
#include <QtTest>

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void splashPictureIsThere();
    void iconHasAllItsSizes();
    void callingAgainDoesNoHarm();
};

void TstResources::splashPictureIsThere()
{
    initResources();
    const QImage splash(QStringLiteral(":/pictures/zrtss1.jpg"));
    QCOMPARE(splash.size(), QSize(600, 340));
}

void TstResources::iconHasAllItsSizes()
{
    const QIcon icon = applicationIcon();
    for (const int size : {16, 32, 48, 64, 128, 256}) {
        const QImage image = icon.pixmap(size, size).toImage();
        QCOMPARE(image.size(), QSize(size, size));
        QCOMPARE(qAlpha(image.pixel(size / 2, size / 2)), 255);
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    }
}

void TstResources::callingAgainDoesNoHarm()
{
    initResources();
    initResources();
    QVERIFY(!QImage(QStringLiteral(":/pictures/zrtss1.jpg")).isNull());
}

QTEST_MAIN(TstResources)

#include "tst_resources.moc"
