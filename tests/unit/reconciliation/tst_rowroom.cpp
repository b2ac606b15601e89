#include "base/gui/fonts.h"
#include "controller/modulecontroller_view.h"
#include "protocol/records/systemstatus.h"
#include "support/appfixture.h"

#include <QApplication>
#include <QScrollArea>
#include <QtTest>

namespace {

constexpr int kNoTaller = 110;    // pixels; the row needs about 95
constexpr int kListAtLeast = 240; // two rows and a bit of the third, with the system panel above

} // namespace

/// How the window shares its room among the rows that are made while it is on screen.
class TstRowRoom : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void controllerRowTakesOnlyItsOwnHeight_data();
    void controllerRowTakesOnlyItsOwnHeight();
};

void TstRowRoom::initTestCase()
{
    fonts::installSubstitutions();
    QApplication::setFont(fonts::text());
}

void TstRowRoom::controllerRowTakesOnlyItsOwnHeight_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("modules");
    QTest::addColumn<int>("times");
    for (const char *style : {"Fusion", "Windows"}) {
        for (const int modules : {0, 1, 4, 128})
            QTest::addRow("%s, %d modules", style, modules) << QString(style) << modules << 1;
        QTest::addRow("%s, the chain read again", style) << QString(style) << 4 << 2;
    }
}

void TstRowRoom::controllerRowTakesOnlyItsOwnHeight()
{
    QFETCH(QString, style);
    QFETCH(int, modules);
    QFETCH(int, times);
    QApplication::setStyle(style);
    AppFixture fixture;
    fixture.writeSettings("PORT1=COM5:115200,E,8,1\r\n"); // no mode: no link is opened
    fixture.start();
    QVERIFY(QTest::qWaitForWindowActive(fixture.window()));
    const auto status =
        QVariant::fromValue(systemStatus(std::vector<int>(static_cast<std::size_t>(modules), 1)));
    for (int read = 0; read < times; ++read) {
        if (read > 0)
            fixture.app->Slot_CleanSlateProtocol();
        fixture.app->Slot_SystemStatus(status);
        QCoreApplication::processEvents();
    }

    const auto *row = fixture.window()->findChild<ModuleController_View *>();
    QVERIFY(row);
    const QWidget *frame = row->parentWidget();
    QCOMPARE(fixture.window()->size(), QSize(1160, 500));
    QVERIFY(frame->contentsRect().contains(row->geometry()));
    QVERIFY(row->height() >= row->minimumSizeHint().height());
    QCOMPARE(frame->height(), qMax(frame->minimumHeight(), frame->sizeHint().height()));
    QVERIFY(frame->height() < kNoTaller);
    const int list = fixture.child<QScrollArea>("scrollArea")->viewport()->height();
    QVERIFY2(list > kListAtLeast, qPrintable(QString::number(list)));
}

QTEST_MAIN(TstRowRoom)

#include "tst_rowroom.moc"
