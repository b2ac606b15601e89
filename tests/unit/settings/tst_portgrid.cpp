#include "settings/portgrid.h"

#include "support/messagecatcher.h"

#include <QLabel>
#include <QtTest>
#include <memory>

class TstPortGrid : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void namesGiveNumbers_data();
    void namesGiveNumbers();
    void gridBeginsEmpty();
    void bandsStandInOrder();
    void portIsShownInItsPlace_data();
    void portIsShownInItsPlace();
    void allPortsAreShown();
    void restOfTheNameIsShown();
    void nextSurveyReplacesTheLast();
    void noPortLeavesTheGridEmpty();
    void portBeyondTheTableIsLogged();
    void nameWithoutPositiveNumberIsSkipped_data();
    void nameWithoutPositiveNumberIsSkipped();

private:
    QStringList texts() const;

    std::unique_ptr<QWidget> m_numbers;
    std::unique_ptr<QWidget> m_bands;
    std::unique_ptr<PortGrid> m_grid;
};

namespace {

QStringList emptyGrid()
{
    QStringList texts;
    for (int i = 0; i < 150; ++i)
        texts.append(QStringLiteral("__"));
    return texts;
}

} // namespace

void TstPortGrid::init()
{
    m_numbers = std::make_unique<QWidget>();
    m_bands = std::make_unique<QWidget>();
    m_grid = std::make_unique<PortGrid>(*m_numbers, *m_bands);
}

void TstPortGrid::cleanup()
{
    m_grid.reset();
    m_bands.reset();
    m_numbers.reset();
}

QStringList TstPortGrid::texts() const
{
    QStringList texts;
    for (int n = 1; n <= 150; ++n) {
        const auto *label = m_numbers->findChild<QLabel *>(QStringLiteral("portNumber%1").arg(n));
        texts.append(label ? label->text() : QStringLiteral("missing"));
    }
    return texts;
}

void TstPortGrid::namesGiveNumbers_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::newRow("first") << "COM1" << 1;
    QTest::newRow("last of the table") << "COM150" << 150;
    QTest::newRow("beyond the table") << "COM151" << 151;
    QTest::newRow("leading zero") << "COM07" << 7;
    QTest::newRow("other kind") << "LPT1" << 0;
    QTest::newRow("no digits") << "COM" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("zero") << "COM0" << 0;
    QTest::newRow("negative") << "COM-3" << 0;
    QTest::newRow("letters behind") << "COM3a" << 0;
    QTest::newRow("fraction") << "COM3.5" << 0;
    QTest::newRow("hexadecimal") << "COM0x10" << 0;
    QTest::newRow("too large for a number") << "COM99999999999" << 0;
    QTest::newRow("lower case") << "com3" << 0;
}

void TstPortGrid::namesGiveNumbers()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QCOMPARE(portNumber(name), number);
}

void TstPortGrid::gridBeginsEmpty()
{
    QCOMPARE(texts(), emptyGrid());
}

void TstPortGrid::bandsStandInOrder()
{
    const QStringList expected = {QStringLiteral("  01...25:"), QStringLiteral("  26...50:"),
                                  QStringLiteral("  51...75:"), QStringLiteral(" 76...100:"),
                                  QStringLiteral("101...125:"), QStringLiteral("126...150:")};
    m_bands->show();
    QStringList found;
    int lastY = -1;
    const auto labels = m_bands->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        found.append(label->text());
        QVERIFY(label->y() > lastY);
        lastY = label->y();
    }
    QCOMPARE(found, expected);
}

void TstPortGrid::portIsShownInItsPlace_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::newRow("1") << 1 << 0 << 0;
    QTest::newRow("25") << 25 << 0 << 24;
    QTest::newRow("26") << 26 << 1 << 0;
    QTest::newRow("50") << 50 << 1 << 24;
    QTest::newRow("51") << 51 << 2 << 0;
    QTest::newRow("88") << 88 << 3 << 12;
    QTest::newRow("125") << 125 << 4 << 24;
    QTest::newRow("126") << 126 << 5 << 0;
    QTest::newRow("150") << 150 << 5 << 24;
}

void TstPortGrid::portIsShownInItsPlace()
{
    QFETCH(int, number);
    QFETCH(int, row);
    QFETCH(int, column);
    m_grid->show({QStringLiteral("COM%1").arg(number)});
    QStringList expected = emptyGrid();
    expected[number - 1] = QString::number(number);
    QCOMPARE(texts(), expected);

    m_numbers->show();
    const QSize cell(m_numbers->width() / 25, m_numbers->height() / 6);
    const QWidget *label =
        m_numbers->childAt(column * cell.width() + cell.width() / 2, row * cell.height() + cell.height() / 2);
    QVERIFY(label);
    QCOMPARE(label->objectName(), QStringLiteral("portNumber%1").arg(number));
}

void TstPortGrid::allPortsAreShown()
{
    QStringList names;
    QStringList expected;
    for (int n = 1; n <= 150; ++n) {
        names.prepend(QStringLiteral("COM%1").arg(n));
        expected.append(QString::number(n));
    }
    m_grid->show(names);
    QCOMPARE(texts(), expected);
}

void TstPortGrid::restOfTheNameIsShown()
{
    m_grid->show({QStringLiteral("COM007")});
    QCOMPARE(texts().at(6), QStringLiteral("007"));
}

void TstPortGrid::nextSurveyReplacesTheLast()
{
    m_grid->show({QStringLiteral("COM3"), QStringLiteral("COM4")});
    m_grid->show({QStringLiteral("COM4"), QStringLiteral("COM5")});
    QCOMPARE(texts().mid(2, 3),
             (QStringList{QStringLiteral("__"), QStringLiteral("4"), QStringLiteral("5")}));
}

void TstPortGrid::noPortLeavesTheGridEmpty()
{
    m_grid->show({QStringLiteral("COM3")});
    m_grid->show({});
    QCOMPARE(texts(), emptyGrid());
}

void TstPortGrid::portBeyondTheTableIsLogged()
{
    MessageCatcher log;
    m_grid->show({QStringLiteral("COM150"), QStringLiteral("COM151"), QStringLiteral("COM1000"),
                  QStringLiteral("COM2")});
    QCOMPARE(log.lines(),
             (QStringList{QStringLiteral("Ports more than 150"), QStringLiteral("Ports more than 150")}));
    QStringList expected = emptyGrid();
    expected[1] = QStringLiteral("2");
    expected[149] = QStringLiteral("150");
    QCOMPARE(texts(), expected);
}

void TstPortGrid::nameWithoutPositiveNumberIsSkipped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("other kind") << "LPT1";
    QTest::newRow("no digits") << "COM";
    QTest::newRow("zero") << "COM0";
    QTest::newRow("negative") << "COM-1";
    QTest::newRow("empty") << "";
}

void TstPortGrid::nameWithoutPositiveNumberIsSkipped()
{
    QFETCH(QString, name);
    MessageCatcher log;
    m_grid->show({name, QStringLiteral("COM9")});
    QStringList expected = emptyGrid();
    expected[8] = QStringLiteral("9");
    QCOMPARE(texts(), expected);
    QCOMPARE(log.lines(), QStringList());
}

QTEST_MAIN(TstPortGrid)
#include "tst_portgrid.moc"
