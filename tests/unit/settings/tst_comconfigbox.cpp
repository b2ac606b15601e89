#include "settings/comconfigbox.h"

#include "support/messagecatcher.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>
#include <memory>
#include <optional>

using model_Namespace::Settings;

Q_DECLARE_METATYPE(std::optional<Settings>)

namespace {

/// The words of a port line; the texts are separated by bars.
QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char('|'));
}

Settings record(const char *port, int baud, int parity, int dataBits, int stopBits, const char *config)
{
    Settings settings;
    settings.portName = QString::fromLatin1(port);
    settings.baudRate = baud;
    settings.parity = parity;
    settings.dataBits = dataBits;
    settings.stopBits = stopBits;
    settings.serialConfig = QString::fromLatin1(config);
    return settings;
}

} // namespace

class TstComConfigBox : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void groupsHoldTheirButtons_data();
    void groupsHoldTheirButtons();
    void windowIsAsAgreed();
    void levelsStandBesideMarkAndSpace();
    void controlsAreNamed();
    void tabOrderFollowsTheGroups();
    void nothingIsClipped();

    void okGivesTheDefaults();
    void okGivesTheChosenButton_data();
    void okGivesTheChosenButton();
    void okGivesAllFourGroups();
    void okTwiceGivesTheSameText();
    void okHidesTheBox();
    void okWithAGroupWithoutChoiceGivesNothing_data();
    void okWithAGroupWithoutChoiceGivesNothing();
    void groupsAreIndependent();
    void returnConfirmsOnce();
    void escapeConfirmsNothing();
    void windowButtonConfirmsNothing();
    void closedBoxEndsItsRun();

    void listIsParsed_data();
    void listIsParsed();
    void badListIsRejected_data();
    void badListIsRejected();
    void rejectedListLeavesItsTraceUntilTheNext();
    void listDoesNotMoveTheButtons();

private:
    QRadioButton *button(const QString &text) const;
    QPushButton *ok() const { return m_box->findChild<QPushButton *>(QStringLiteral("okButton")); }
    void show();

    std::unique_ptr<ComConfigBox> m_box;
    QList<Settings> m_configurations;
    QList<Settings> m_defaults;
};

void TstComConfigBox::init()
{
    m_box = std::make_unique<ComConfigBox>();
    m_configurations.clear();
    m_defaults.clear();
    connect(m_box.get(), &ComConfigBox::setConfiguration, this,
            [this](const Settings &settings) { m_configurations.append(settings); });
    connect(m_box.get(), &ComConfigBox::setDefaults, this,
            [this](const Settings &settings) { m_defaults.append(settings); });
    QVERIFY(ok());
}

void TstComConfigBox::cleanup()
{
    m_box.reset();
}

QRadioButton *TstComConfigBox::button(const QString &text) const
{
    const auto buttons = m_box->findChildren<QRadioButton *>();
    for (QRadioButton *candidate : buttons) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

void TstComConfigBox::show()
{
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
}

void TstComConfigBox::groupsHoldTheirButtons_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QStringList>("buttons");
    QTest::addColumn<QString>("checked");
    QTest::newRow("baud") << "baudrate" << words("1200|2400|4800|9600|19200|38400|115200|57600") << "115200";
    QTest::newRow("parity") << "parity" << words("EVEN|ODD|MARK|SPACE|NONE") << "EVEN";
    QTest::newRow("data bits") << "data bits" << words("7 bits|8 bits") << "8 bits";
    QTest::newRow("stop bits") << "stop bits" << words("1 bit|2 bits") << "1 bit";
}

void TstComConfigBox::groupsHoldTheirButtons()
{
    QFETCH(QString, group);
    QFETCH(QStringList, buttons);
    QFETCH(QString, checked);
    int found = 0;
    const auto groups = m_box->findChildren<QGroupBox *>();
    QCOMPARE(groups.size(), 4);
    for (const QGroupBox *candidate : groups) {
        if (candidate->title() != group)
            continue;
        ++found;
        QStringList texts;
        QStringList checkedTexts;
        const auto radioButtons = candidate->findChildren<QRadioButton *>();
        for (const QRadioButton *radioButton : radioButtons) {
            texts.append(radioButton->text());
            if (radioButton->isChecked())
                checkedTexts.append(radioButton->text());
        }
        QCOMPARE(texts, buttons);
        QCOMPARE(checkedTexts, QStringList{checked});
    }
    QCOMPARE(found, 1);
}

void TstComConfigBox::windowIsAsAgreed()
{
    QCOMPARE(m_box->windowTitle(), QStringLiteral("Dialog"));
    for (const Qt::WindowType flag :
         {Qt::CustomizeWindowHint, Qt::WindowCloseButtonHint, Qt::WindowStaysOnTopHint})
        QVERIFY2(m_box->windowFlags() & flag, qPrintable(QString::number(flag)));
    QVERIFY(!(m_box->windowFlags() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(m_box->windowType(), Qt::Dialog);
    QCOMPARE(ok()->text(), QStringLiteral("Ok"));
}

void TstComConfigBox::levelsStandBesideMarkAndSpace()
{
    show();
    int found = 0;
    const auto labels = m_box->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        const bool isMark = label->text() == QLatin1String("-12V = '1'");
        if (!isMark && label->text() != QLatin1String("+12V = '0'"))
            continue;
        ++found;
        const QRadioButton *beside = button(isMark ? QStringLiteral("MARK") : QStringLiteral("SPACE"));
        QCOMPARE(label->parentWidget(), beside->parentWidget());
        QCOMPARE(label->geometry().center().y(), beside->geometry().center().y());
        QVERIFY(label->x() > beside->geometry().right());
    }
    QCOMPARE(found, 2);
}

void TstComConfigBox::controlsAreNamed()
{
    QStringList names;
    QStringList accessibleNames;
    const auto buttons = m_box->findChildren<QAbstractButton *>();
    QCOMPARE(buttons.size(), 18);
    for (const QAbstractButton *control : buttons) {
        QVERIFY(!control->objectName().isEmpty());
        QVERIFY2(!control->accessibleName().isEmpty(), qPrintable(control->objectName()));
        names.append(control->objectName());
        accessibleNames.append(control->accessibleName());
    }
    QCOMPARE(names.removeDuplicates(), 0);
    QCOMPARE(accessibleNames.removeDuplicates(), 0);
}

void TstComConfigBox::tabOrderFollowsTheGroups()
{
    show();
    const QStringList expected = {QStringLiteral("115200"), QStringLiteral("EVEN"), QStringLiteral("8 bits"),
                                  QStringLiteral("1 bit"), QStringLiteral("Ok")};
    button(QStringLiteral("115200"))->setFocus();
    QStringList texts;
    for (int i = 0; i < expected.size(); ++i) {
        const auto *focused = qobject_cast<QAbstractButton *>(m_box->focusWidget());
        QVERIFY(focused);
        texts.append(focused->text());
        QTest::keyClick(m_box->focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(texts, expected);

    // Backwards too, and to another choice once it was made.
    QTest::mouseClick(button(QStringLiteral("2 bits")), Qt::LeftButton, {}, QPoint(8, 8));
    ok()->setFocus();
    QTest::keyClick(ok(), Qt::Key_Backtab);
    QCOMPARE(m_box->focusWidget(), button(QStringLiteral("2 bits")));
    QTest::keyClick(m_box->focusWidget(), Qt::Key_Backtab);
    QCOMPARE(m_box->focusWidget(), button(QStringLiteral("8 bits")));
    QTest::keyClick(m_box->focusWidget(), Qt::Key_Up);
    QCOMPARE(m_box->focusWidget(), button(QStringLiteral("7 bits")));
    QVERIFY(button(QStringLiteral("7 bits"))->isChecked());
}

void TstComConfigBox::nothingIsClipped()
{
    show();
    const auto widgets = m_box->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible())
            continue;
        QVERIFY2(widget->width() >= widget->minimumSizeHint().width(), qPrintable(widget->objectName()));
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), qPrintable(widget->objectName()));
        QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()),
                 qPrintable(widget->objectName()));
    }
}

void TstComConfigBox::okGivesTheDefaults()
{
    show();
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_configurations, QList<Settings>{record("", 115200, 2, 8, 1, "115200:E,8,1")});
    QCOMPARE(m_defaults, QList<Settings>());
}

void TstComConfigBox::okGivesTheChosenButton_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Settings>("expected");
    QTest::newRow("1200") << "1200" << record("", 1200, 2, 8, 1, "1200:E,8,1");
    QTest::newRow("2400") << "2400" << record("", 2400, 2, 8, 1, "2400:E,8,1");
    QTest::newRow("4800") << "4800" << record("", 4800, 2, 8, 1, "4800:E,8,1");
    QTest::newRow("9600") << "9600" << record("", 9600, 2, 8, 1, "9600:E,8,1");
    QTest::newRow("19200") << "19200" << record("", 19200, 2, 8, 1, "19200:E,8,1");
    QTest::newRow("38400") << "38400" << record("", 38400, 2, 8, 1, "38400:E,8,1");
    QTest::newRow("57600") << "57600" << record("", 57600, 2, 8, 1, "57600:E,8,1");
    QTest::newRow("115200") << "115200" << record("", 115200, 2, 8, 1, "115200:E,8,1");
    QTest::newRow("even") << "EVEN" << record("", 115200, 2, 8, 1, "115200:E,8,1");
    QTest::newRow("odd") << "ODD" << record("", 115200, 3, 8, 1, "115200:O,8,1");
    QTest::newRow("mark") << "MARK" << record("", 115200, 5, 8, 1, "115200:M,8,1");
    QTest::newRow("space") << "SPACE" << record("", 115200, 4, 8, 1, "115200:S,8,1");
    QTest::newRow("none") << "NONE" << record("", 115200, 0, 8, 1, "115200:N,8,1");
    QTest::newRow("7 bits") << "7 bits" << record("", 115200, 2, 7, 1, "115200:E,7,1");
    QTest::newRow("8 bits") << "8 bits" << record("", 115200, 2, 8, 1, "115200:E,8,1");
    QTest::newRow("1 bit") << "1 bit" << record("", 115200, 2, 8, 1, "115200:E,8,1");
    QTest::newRow("2 bits") << "2 bits" << record("", 115200, 2, 8, 2, "115200:E,8,2");
}

void TstComConfigBox::okGivesTheChosenButton()
{
    QFETCH(QString, text);
    QFETCH(Settings, expected);
    show();
    QTest::mouseClick(button(text), Qt::LeftButton, {}, QPoint(8, button(text)->height() / 2));
    QVERIFY(button(text)->isChecked());
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_configurations, QList<Settings>{expected});
}

void TstComConfigBox::okGivesAllFourGroups()
{
    show();
    for (const char *text : {"9600", "ODD", "7 bits", "2 bits"})
        button(QString::fromLatin1(text))->click();
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_configurations, QList<Settings>{record("", 9600, 3, 7, 2, "9600:O,7,2")});
}

void TstComConfigBox::okTwiceGivesTheSameText()
{
    ok()->click();
    ok()->click();
    QCOMPARE(m_configurations.size(), 2);
    QCOMPARE(m_configurations.at(1), m_configurations.at(0));
}

void TstComConfigBox::okHidesTheBox()
{
    show();
    bool wasVisible = false;
    connect(m_box.get(), &ComConfigBox::setConfiguration, this, [&] { wasVisible = m_box->isVisible(); });
    QTest::mouseClick(ok(), Qt::LeftButton);
    QVERIFY(wasVisible);
    QVERIFY(!m_box->isVisible());
}

void TstComConfigBox::okWithAGroupWithoutChoiceGivesNothing_data()
{
    QTest::addColumn<QString>("checked");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("baud") << "115200"
                          << "Baud Rate not Parsed";
    QTest::newRow("parity") << "EVEN"
                            << "Error in parsing Parity";
    QTest::newRow("data bits") << "8 bits"
                               << "Error in parsing data bits";
    QTest::newRow("stop bits") << "1 bit"
                               << "Error in parsing Stop Bit";
}

void TstComConfigBox::okWithAGroupWithoutChoiceGivesNothing()
{
    QFETCH(QString, checked);
    QFETCH(QString, complaint);
    show();
    QRadioButton *chosen = button(checked);
    chosen->setAutoExclusive(false);
    chosen->setChecked(false);
    const MessageCatcher log;
    QTest::mouseClick(ok(), Qt::LeftButton);
    QCOMPARE(m_configurations.size(), 0);
    QVERIFY(!m_box->isVisible());
    QVERIFY2(log.containsText(complaint), qPrintable(log.lines().join(QLatin1Char('\n'))));
}

void TstComConfigBox::groupsAreIndependent()
{
    button(QStringLiteral("NONE"))->click();
    QVERIFY(!button(QStringLiteral("EVEN"))->isChecked());
    for (const char *text : {"115200", "8 bits", "1 bit"})
        QVERIFY(button(QString::fromLatin1(text))->isChecked());
}

void TstComConfigBox::returnConfirmsOnce()
{
    show();
    button(QStringLiteral("EVEN"))->setFocus();
    QTest::keyClick(m_box->focusWidget(), Qt::Key_Return);
    QCOMPARE(m_configurations.size(), 1);
    QVERIFY(!m_box->isVisible());
}

void TstComConfigBox::escapeConfirmsNothing()
{
    show();
    QTest::keyClick(m_box->focusWidget(), Qt::Key_Escape);
    QCOMPARE(m_configurations.size(), 0);
    QVERIFY(!m_box->isVisible());
}

void TstComConfigBox::windowButtonConfirmsNothing()
{
    bool ran = false;
    QTimer::singleShot(0, m_box.get(), [&] {
        ran = m_box->isVisible();
        button(QStringLiteral("9600"))->click();
        m_box->close(); // what the button of the window does
    });
    QCOMPARE(m_box->exec(), int(QDialog::Rejected));
    QVERIFY(ran);
    QVERIFY(!m_box->isVisible());
    QCOMPARE(m_configurations.size(), 0);
    QCOMPARE(m_defaults.size(), 0);
}

void TstComConfigBox::closedBoxEndsItsRun()
{
    QTimer::singleShot(0, m_box.get(), [this] { QTest::mouseClick(ok(), Qt::LeftButton); });
    m_box->exec();
    QCOMPARE(m_configurations.size(), 1);
}

void TstComConfigBox::listIsParsed_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<Settings>("expected");
    QTest::newRow("default") << words("PORT1|COM5|115200|E|8|1")
                             << record("COM5", 115200, 2, 8, 1, "115200:E,8,1");
    QTest::newRow("all others") << words("PORT1|COM150|1200|N|7|2")
                                << record("COM150", 1200, 0, 7, 2, "1200:N,7,2");
    QTest::newRow("odd") << words("PORT1|COM1|2400|O|8|1") << record("COM1", 2400, 3, 8, 1, "2400:O,8,1");
    QTest::newRow("space") << words("PORT1|COM1|4800|S|8|1") << record("COM1", 4800, 4, 8, 1, "4800:S,8,1");
    QTest::newRow("mark") << words("PORT1|COM1|9600|M|8|1") << record("COM1", 9600, 5, 8, 1, "9600:M,8,1");
    QTest::newRow("whole words") << words("x|COM1|9600|EVEN|8bits|1bit")
                                 << record("COM1", 9600, 2, 8, 1, "9600:E,8,1");
    QTest::newRow("more entries") << words("PORT1|COM1|9600|E|8|1|x|")
                                  << record("COM1", 9600, 2, 8, 1, "9600:E,8,1");
    QTest::newRow("any name") << words("PORT1|ttyS0|9600|E|8|1")
                              << record("ttyS0", 9600, 2, 8, 1, "9600:E,8,1");
}

void TstComConfigBox::listIsParsed()
{
    QFETCH(QStringList, list);
    QFETCH(Settings, expected);
    MessageCatcher log;
    QCOMPARE(m_box->parseConfig(list), 0);
    QCOMPARE(m_defaults, QList<Settings>{expected});
    QCOMPARE(m_configurations, QList<Settings>());
    QCOMPARE(log.lines(), QStringList());
}

void TstComConfigBox::badListIsRejected_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QStringList>("log");
    const QStringList baud = {QStringLiteral("Baud Rate not Parsed")};
    const QStringList parity = {QStringLiteral("Error in parsing Parity")};
    const QStringList dataBits = {QStringLiteral("Error in parsing data bits")};
    const QStringList stopBit = {QStringLiteral("Error in parsing Stop Bit")};
    QTest::newRow("empty") << QStringList() << QStringList();
    QTest::newRow("three entries, parameters never set") << words("PORT1|COM5|") << QStringList();
    QTest::newRow("five entries") << words("PORT1|COM5|115200|E|8") << QStringList();
    QTest::newRow("rate 9601") << words("PORT1|COM5|9601|E|8|1") << baud;
    QTest::newRow("no rate") << words("PORT1|COM5||E|8|1") << baud;
    QTest::newRow("shifted by a word in front") << words("|PORT1|COM5|115200|E|8|1") << baud;
    QTest::newRow("parity X") << words("PORT1|COM5|115200|X|8|1") << parity;
    QTest::newRow("no parity") << words("PORT1|COM5|115200||8|1") << parity;
    QTest::newRow("9 data bits") << words("PORT1|COM5|115200|E|9|1") << dataBits;
    QTest::newRow("no data bits") << words("PORT1|COM5|115200|E||1") << dataBits;
    QTest::newRow("3 stop bits") << words("PORT1|COM5|115200|E|8|3") << stopBit;
    QTest::newRow("no stop bits") << words("PORT1|COM5|115200|E|8|") << stopBit;
}

void TstComConfigBox::badListIsRejected()
{
    QFETCH(QStringList, list);
    QFETCH(QStringList, log);
    MessageCatcher catcher;
    QCOMPARE(m_box->parseConfig(list), 0);
    QCOMPARE(m_defaults, QList<Settings>());
    QCOMPARE(m_configurations, QList<Settings>());
    QCOMPARE(catcher.lines(), log);
}

void TstComConfigBox::rejectedListLeavesItsTraceUntilTheNext()
{
    // What was parsed before the fault stays, the port's name does not come; a rebuild starts anew.
    m_box->parseConfig(words("PORT1|COM5|9600|O|8|1"));
    MessageCatcher log;
    m_box->parseConfig(words("PORT1|COM6|1200|X|7|2"));
    m_box->parseConfig(words("PORT1|COM7|9601|E|7|2"));
    ok()->click();
    QCOMPARE(m_configurations, QList<Settings>{record("COM5", 115200, 2, 8, 1, "115200:E,8,1")});
}

void TstComConfigBox::listDoesNotMoveTheButtons()
{
    m_box->parseConfig(words("PORT1|COM5|9600|N|7|2"));
    for (const char *text : {"115200", "EVEN", "8 bits", "1 bit"})
        QVERIFY(button(QString::fromLatin1(text))->isChecked());
}

QTEST_MAIN(TstComConfigBox)
#include "tst_comconfigbox.moc"
