#include "app/initmodulenotfound_view.h"

#include <QLabel>
#include <QtTest>

class TstInitModuleNotFoundView : public QObject
{
    Q_OBJECT

private slots:
    void kindChoosesTheText_data();
    void kindChoosesTheText();
    void frameIsBuiltAsAgreed();
    void labelHasThePlaceholderFont();
};

void TstInitModuleNotFoundView::kindChoosesTheText_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");

    const QString noController = QStringLiteral("No Controller connected or detected.");
    const QString noDevice = QStringLiteral("No Device connected or detected.");
    QTest::newRow("-1") << -1 << noController;
    QTest::newRow("0") << 0 << noController;
    QTest::newRow("1") << 1 << noController;
    QTest::newRow("2") << 2 << noController;
    QTest::newRow("3") << 3 << noDevice;
    QTest::newRow("4") << 4 << noDevice;
    QTest::newRow("5") << 5 << noDevice;
    QTest::newRow("6") << 6 << noController;
}

void TstInitModuleNotFoundView::kindChoosesTheText()
{
    QFETCH(int, kind);
    QFETCH(QString, text);
    const InitModuleNotFound_View view(kind);
    const auto labels = view.findChildren<QLabel *>();
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first()->text(), text);
    QCOMPARE(view.accessibleName(), text);
}

void TstInitModuleNotFoundView::frameIsBuiltAsAgreed()
{
    const InitModuleNotFound_View view(1);
    QCOMPARE(view.frameShape(), QFrame::StyledPanel);
    QCOMPARE(view.frameShadow(), QFrame::Sunken);
    QCOMPARE(view.size(), QSize(554, 95));
    QCOMPARE(view.findChild<QLabel *>()->alignment(), Qt::Alignment(Qt::AlignCenter));
}

void TstInitModuleNotFoundView::labelHasThePlaceholderFont()
{
    const InitModuleNotFound_View view(1);
    const QFont font = view.findChild<QLabel *>()->font();
    QCOMPARE(font.family(), QString("Segoe UI"));
    QCOMPARE(font.pixelSize(), 15);
    QCOMPARE(font.weight(), 75);
    QVERIFY(font.italic());
    QVERIFY(font.kerning());
}

QTEST_MAIN(TstInitModuleNotFoundView)

#include "tst_initmodulenotfound_view.moc"
