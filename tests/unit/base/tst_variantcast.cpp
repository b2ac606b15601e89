#include "base/variantcast.h"

#include <QtTest>

struct Point
{
    int x = 0;
    QString name;
};
Q_DECLARE_METATYPE(Point)

class TstVariantCast : public QObject
{
    Q_OBJECT

private slots:
    void recordComesBackWhole();
    void foreignTypeIsConvertedWhereAConversionExists();
    void foreignTypeReadsAsZero();
    void emptyVariantReadsAsZero();
};

void TstVariantCast::recordComesBackWhole()
{
    const auto point = recordFromVariant<Point>(QVariant::fromValue(Point{7, QStringLiteral("seven")}));
    QCOMPARE(point.x, 7);
    QCOMPARE(point.name, QStringLiteral("seven"));
}

void TstVariantCast::foreignTypeIsConvertedWhereAConversionExists()
{
    QMetaType::registerConverter<QString, Point>([](const QString &text) {
        return Point{text.size(), text};
    });
    QCOMPARE(recordFromVariant<Point>(QVariant(QStringLiteral("four"))).x, 4);
}

void TstVariantCast::foreignTypeReadsAsZero()
{
    const auto point = recordFromVariant<Point>(QVariant(42));
    QCOMPARE(point.x, 0);
    QCOMPARE(point.name, QString());
}

void TstVariantCast::emptyVariantReadsAsZero()
{
    QCOMPARE(recordFromVariant<Point>(QVariant()).x, 0);
}

QTEST_GUILESS_MAIN(TstVariantCast)
#include "tst_variantcast.moc"
