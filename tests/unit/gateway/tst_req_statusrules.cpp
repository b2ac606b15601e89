#include "reqpanel.h"

#include <QSignalSpy>

namespace {

const ReqPanel::Fields kFirst{
    {2, "V1"},      {5, "3"},         {6, "2500"},  {7, "16"},  {8, "UDP-M"},  {9, "B"},
    {10, "16"},     {11, "10.0.0.1"}, {12, "5001"}, {13, "U"},  {17, "123"},   {18, "40.5"},
    {19, "35.25"},  {28, "300000"},   {29, "1111"}, {31, "1"},  {32, "0"},     {33, "1"},
    {34, "MASTER"}, {35, "100"},      {36, "10"},   {37, "20"}, {38, "ZRT-1"},
};

/// Differs from the first one in every field.
const ReqPanel::Fields kSecond{
    {2, "V2"},     {5, "4"},         {6, "1250"},  {7, "32"},  {8, "TCP-C"},   {9, "L"},
    {10, "18"},    {11, "10.0.0.2"}, {12, "5002"}, {13, "2"},  {17, "456"},    {18, "41.5"},
    {19, "36.5"},  {28, "60000"},    {29, "2222"}, {31, "2"},  {32, "1"},      {33, "2"},
    {34, "SLAVE"}, {35, "200"},      {36, "11"},   {37, "21"}, {38, "IENA-1"},
};

/// Notes in which order the widgets change.
class ChangeRecorder : public QObject
{
public:
    explicit ChangeRecorder(const ReqPanel &panel)
    {
        for (const char *name :
             {"GtwVersion", "SerialNo", "CoreTempBox", "PCBTempBox", "extIpAddr", "extPort", "unixEpochField",
              "PTPStateLineEdit", "accuracyPTP", "minBox", "maxBox"}) {
            connect(panel.child<QLineEdit>(name), &QLineEdit::textChanged, this,
                    [this, name] { note(name); });
        }
        for (const char *name :
             {"comboSimultn", "comboMode", "comboActivCOM", "comboPTP", "comboBoxDataPtcl"}) {
            connect(panel.child<QComboBox>(name), qOverload<int>(&QComboBox::currentIndexChanged), this,
                    [this, name] { note(name); });
        }
        for (const char *name : {"radio18Bit", "radioLitleEndn", "twoComp"}) {
            connect(panel.child<QAbstractButton>(name), &QAbstractButton::toggled, this,
                    [this, name] { note(name); });
        }
        m_marked = panel.cell("32,1250");
        m_dead = panel.cell("8,10000");
        m_lamp = panel.child<QWidget>("PCM_Led");
        for (QWidget *widget : {m_marked, m_dead, m_lamp})
            widget->installEventFilter(this);
    }

    QStringList order;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_marked && event->type() == QEvent::StyleChange)
            note("mark");
        if (watched == m_dead && event->type() == QEvent::EnabledChange)
            note("limit");
        if (watched == m_lamp && event->type() == QEvent::PaletteChange)
            note("PCM_Led");
        return false;
    }

private:
    void note(const char *name)
    {
        const QString log = QStringLiteral("From extract status");
        if (!order.contains(log) && m_log.contains(log))
            order.append(log);
        const QString text = QString::fromLatin1(name);
        if (order.isEmpty() || order.last() != text)
            order.append(text);
    }

    MessageCatcher m_log;
    QWidget *m_marked = nullptr;
    QWidget *m_dead = nullptr;
    QWidget *m_lamp = nullptr;
};

} // namespace

/// Which pieces are a status, and what applying one does and does not do.
class TstReqStatusRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void guardIsANumberAboveOne_data();
    void guardIsANumberAboveOne();
    void invalidStatusIsNoPromptEither();
    void tagInsideALongerPieceIsFound_data();
    void tagInsideALongerPieceIsFound();
    void statusAndPromptCountAsAStatusOnly_data();
    void statusAndPromptCountAsAStatusOnly();
    void statusIsShownInTheDialogue();
    void fieldsAreAppliedInTheirOrder();
    void applyingAStatusSendsNothing();
    void statusChangesNoSetting();
    void lineEndClosesTheLastField_data();
    void lineEndClosesTheLastField();
    void statusLeavesTheOperatorAlone();
    void statusResetsAControlTheGatewayIgnored();
    void statusIsAppliedWhileTheDialogIsHidden();
    void splitStatusIsIgnored();
};

void TstReqStatusRules::guardIsANumberAboveOne_data()
{
    QTest::addColumn<QByteArray>("guard");
    QTest::addColumn<bool>("isApplied");
    const auto row = [](const char *guard, bool isApplied) {
        QTest::newRow(*guard ? guard : "empty") << QByteArray(guard) << isApplied;
    };
    row("1", false);
    row("2", true);
    row("1.0", false);
    row("1.01", true);
    row("1.5", true);
    row("0", false);
    row("", false);
    row("-3", false);
    row("abc", false);
    row("2x", false);
    row("1,5", false);
    row("nan", false);
    row("inf", false);
    row("1e400", false);
    row("1e3", true);
    row("1000000", true);
}

void TstReqStatusRules::guardIsANumberAboveOne()
{
    QFETCH(QByteArray, guard);
    QFETCH(bool, isApplied);
    ReqPanel p;
    p.report({{2, "old"}});
    auto fields = kSecond;
    fields[3] = guard;
    p.report(fields);
    QCOMPARE(p.text("GtwVersion"), isApplied ? QStringLiteral("V2") : QStringLiteral("old"));
    QCOMPARE(p.text("maxBox"), isApplied ? QStringLiteral("21") : QString());
    QCOMPARE(p.index("comboSimultn"), isApplied ? 4 : 0);
    QCOMPARE(p.sent(), QByteArray());
}

void TstReqStatusRules::invalidStatusIsNoPromptEither()
{
    ReqPanel p;
    p.receive("#S;;V;1;\n]----[NEW IP ADDRESS");
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(3000);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(p.time.activeTimers(), 0);
}

void TstReqStatusRules::tagInsideALongerPieceIsFound_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::addColumn<QString>("version");
    QTest::newRow("text in front") << QByteArray("noise #S;;V9;2;") << "V9";
    QTest::newRow("line in front") << QByteArray("[gw]\r\n#S;;V9;2;") << "V9";
    QTest::newRow("fields in front are counted") << QByteArray("a;b;V8;2;#S;V9;3") << "V8";
    QTest::newRow("tag in the third field") << QByteArray("a;b;#S;2") << "#S";
    QTest::newRow("tag goes on") << QByteArray("#STATUS;;V9;2") << "V9";
    QTest::newRow("small letter is no tag") << QByteArray("#s;;V9;2") << "";
    QTest::newRow("no tag") << QByteArray("S;;V9;2") << "";
}

void TstReqStatusRules::tagInsideALongerPieceIsFound()
{
    QFETCH(QByteArray, piece);
    ReqPanel p;
    p.receive(piece);
    QTEST(p.text("GtwVersion"), "version");
}

void TstReqStatusRules::statusAndPromptCountAsAStatusOnly_data()
{
    QTest::addColumn<QByteArray>("piece");
    QTest::newRow("prompt behind") << ReqPanel::status(kFirst) + "\r\n[gw]----";
    QTest::newRow("prompt in front") << "[gw]---- " + ReqPanel::status(kFirst);
    QTest::newRow("prompt within") << ReqPanel::status({{1, "]----"}, {2, "V1"}});
}

void TstReqStatusRules::statusAndPromptCountAsAStatusOnly()
{
    QFETCH(QByteArray, piece);
    ReqPanel p;
    p.receive(piece);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V1"));
    p.time.advance(5000);
    QCOMPARE(p.sent(), QByteArray()); // no status request at once, none by a timer
}

void TstReqStatusRules::statusIsShownInTheDialogue()
{
    ReqPanel p;
    p.receive("#S;;V;2;");
    QCOMPARE(p.shown(), QStringLiteral("#S;;V;2;\n"));
    p.receive("#S;;W;1;");
    QCOMPARE(p.shown(), QStringLiteral("#S;;W;1;\n"));
}

void TstReqStatusRules::fieldsAreAppliedInTheirOrder()
{
    ReqPanel p;
    p.report(kFirst);
    ChangeRecorder recorder(p);
    p.report(kSecond);
    const QStringList order{"GtwVersion",
                            "radio18Bit",
                            "SerialNo",
                            "mark",
                            "CoreTempBox",
                            "PCBTempBox",
                            "extIpAddr",
                            "extPort",
                            "radioLitleEndn",
                            "twoComp",
                            "comboSimultn",
                            "comboMode",
                            "limit",
                            "unixEpochField",
                            "comboActivCOM",
                            "PCM_Led",
                            "comboPTP",
                            "PTPStateLineEdit",
                            "From extract status",
                            "accuracyPTP",
                            "minBox",
                            "maxBox",
                            "comboBoxDataPtcl"};
    QCOMPARE(recorder.order.join('\n'), order.join('\n'));
}

void TstReqStatusRules::applyingAStatusSendsNothing()
{
    ReqPanel p;
    p.report(kFirst);
    const QSignalSpy rate(p.panel.get(), &GatewayZRT::Signal_SetVXsamplingRate);
    const QSignalSpy minMax(p.panel.get(), &GatewayZRT::Signal_displayMinMax);
    const QSignalSpy details(p.panel.get(), &GatewayZRT::Signal_sendIpDetails);
    const QSignalSpy connects(p.panel.get(), &GatewayZRT::connectToGateway);
    for (int i = 0; i < 3; ++i) {
        p.report(i % 2 == 0 ? kSecond : kFirst);
        p.time.turn();
    }
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V2"));
    QCOMPARE(p.markedCells(), QStringList{"32,1250"});
    QCOMPARE(p.index("comboMode"), 4);
    QVERIFY(p.isChecked("radioLitleEndn") && p.isChecked("radio18Bit") && p.isChecked("twoComp"));
    QCOMPARE(p.lamp("PCM_Led"), QColor(Qt::green));
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
    p.time.advance(5000);
    QCOMPARE(p.sent(), QByteArray());
    QCOMPARE(rate.count() + minMax.count() + details.count() + connects.count(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void TstReqStatusRules::statusChangesNoSetting()
{
    ReqPanel p;
    p.report(kSecond); // TCP-C, 1250, 32, ...
    p.pick("comboMode", 5);
    QCOMPARE(p.sent(), QByteArray("#009_UDP\r"));
}

void TstReqStatusRules::lineEndClosesTheLastField_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("cr") << QByteArray("\r");
    QTest::newRow("lf") << QByteArray("\n");
    QTest::newRow("cr lf and prompt") << QByteArray("\r\n[gw]----");
    QTest::newRow("cr lf and fields") << QByteArray("\r\n;;x");
}

void TstReqStatusRules::lineEndClosesTheLastField()
{
    QFETCH(QByteArray, end);
    ReqPanel p;
    p.receive(ReqPanel::status({{37, "20"}, {38, "IENA-1"}}) + end);
    QCOMPARE(p.index("comboBoxDataPtcl"), 1);
    p.receive("#S;;V1;2;;;;;;;;;;;;;;77" + end);
    QCOMPARE(p.text("SerialNo"), QStringLiteral("000077"));
    QCOMPARE(p.text("maxBox"), QString());
}

void TstReqStatusRules::statusLeavesTheOperatorAlone()
{
    ReqPanel p;
    p.report(kFirst);
    auto *field = p.child<QLineEdit>("extIpAddr");
    field->setFocus();
    field->setSelection(2, 3);
    p.report(kFirst); // the same again: no cursor moves, no focus is taken
    QVERIFY(field->hasFocus());
    QCOMPARE(field->selectedText(), QStringLiteral(".0."));
    QCOMPARE(p.markedCells(), QStringList{"16,2500"});
    auto *box = p.child<QComboBox>("comboSimultn");
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(box->view()->isVisible());
    p.report(kFirst);
    QVERIFY(box->view()->isVisible());
    box->hidePopup();
}

void TstReqStatusRules::statusResetsAControlTheGatewayIgnored()
{
    ReqPanel p;
    p.report(kFirst);
    p.pick("comboSimultn", 7);
    p.click("radio18Bit");
    p.click("8,5000");
    QCOMPARE(p.markedCells(), QStringList{"8,5000"});
    p.report(kFirst);
    QCOMPARE(p.index("comboSimultn"), 3);
    QVERIFY(p.isChecked("radio16Bit"));
    QCOMPARE(p.markedCells(), QStringList{"16,2500"});
}

void TstReqStatusRules::statusIsAppliedWhileTheDialogIsHidden()
{
    ReqPanel p;
    p.panel->close();
    p.report(kSecond);
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V2"));
    QCOMPARE(p.index("comboMode"), 4);
}

void TstReqStatusRules::splitStatusIsIgnored()
{
    const QByteArray whole = ReqPanel::status(kSecond);
    ReqPanel p;
    p.report(kFirst);
    p.forget();
    p.receive("#S;");        // too short for the guard
    p.receive(whole.mid(3)); // no tag
    QCOMPARE(p.text("GtwVersion"), QStringLiteral("V1"));
    QCOMPARE(p.text("maxBox"), QStringLiteral("20"));
    QCOMPARE(p.shown(), QStringLiteral("#S;\n") + QString::fromLatin1(whole.mid(3)) + '\n');
    QCOMPARE(p.sent(), QByteArray());
    p.time.advance(1000); // the second half is a reply: it starts the polling
    QCOMPARE(p.sent(), QByteArray("#?\r"));
}

QTEST_MAIN(TstReqStatusRules)
#include "tst_req_statusrules.moc"
