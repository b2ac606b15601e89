#include "app/resources.h"

#include <QImage>
#include <QPushButton>
#include <QtTest>

class TstResources : public QObject
{
    Q_OBJECT

private slots:
    void splashPictureIsThere();
    void iconHasAllItsSizes();
    void channelPictureFillsItsButton_data();
    void channelPictureFillsItsButton();
    void channelPicturesDiffer();
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

void TstResources::channelPictureFillsItsButton_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QSize>("size");
    QTest::newRow("on") << "checkbox_black"
                        << "png" << QSize(20, 20);
    QTest::newRow("on, not confirmed") << "checkbox_blue"
                                       << "png" << QSize(20, 20);
    QTest::newRow("off") << "checkbox_unchecked"
                         << "png" << QSize(20, 20);
    QTest::newRow("shunt assumed active") << "shunt_aux_fake"
                                          << "bmp" << QSize(20, 20);
    QTest::newRow("entered value") << "editline"
                                   << "png" << QSize(50, 22);
}

void TstResources::channelPictureFillsItsButton()
{
    QFETCH(QString, name);
    QFETCH(QString, suffix);
    QFETCH(QSize, size);
    initResources();
    const QString path = QStringLiteral(":/pictures/%1.%2").arg(name, suffix);
    const QImage picture = QImage(path).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(picture.size(), size);

    QPushButton button;
    button.setFixedSize(size);
    button.setStyleSheet(QStringLiteral("border-image: url(%1);").arg(path));
    QCOMPARE(button.devicePixelRatioF(), 1.0);
    QCOMPARE(button.grab().toImage().convertToFormat(QImage::Format_RGB32), picture);

    const QImage sharp(QStringLiteral(":/pictures/%1@2x.%2").arg(name, suffix));
    QCOMPARE(sharp.size(), 2 * size);
}

void TstResources::channelPicturesDiffer()
{
    initResources();
    for (const char *scale : {"", "@2x"}) {
        QVector<QImage> seen;
        for (const char *name : {"checkbox_black%1.png", "checkbox_blue%1.png", "checkbox_unchecked%1.png",
                                 "shunt_aux_fake%1.bmp"}) {
            const QImage image(":/pictures/" + QString(name).arg(scale));
            QVERIFY2(!image.isNull(), name);
            QVERIFY2(!seen.contains(image.convertToFormat(QImage::Format_RGB32)), name);
            seen.append(image.convertToFormat(QImage::Format_RGB32));
        }
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
