#include "gatewaypanel.h"
#include "support/messagecatcher.h"

#include <QtTest>

namespace {

const GatewayPanel::Fields kFirst{
    {2, "V1"},      {5, "3"},         {6, "2500"},  {7, "16"},  {8, "UDP-M"},  {9, "B"},
    {10, "16"},     {11, "10.0.0.1"}, {12, "5001"}, {13, "U"},  {17, "123"},   {18, "40.5"},
    {19, "35.25"},  {28, "300000"},   {29, "1111"}, {31, "1"},  {32, "0"},     {33, "1"},
    {34, "MASTER"}, {35, "100"},      {36, "10"},   {37, "20"}, {38, "ZRT-1"},
};

/// Differs from the first one in every field.
const GatewayPanel::Fields kSecond{
    {2, "V2"},     {5, "4"},         {6, "1250"},  {7, "32"},  {8, "TCP-C"},   {9, "L"},
    {10, "18"},    {11, "10.0.0.2"}, {12, "5002"}, {13, "2"},  {17, "456"},    {18, "41.5"},
    {19, "36.5"},  {28, "60000"},    {29, "2222"}, {31, "2"},  {32, "1"},      {33, "2"},
    {34, "SLAVE"}, {35, "200"},      {36, "11"},   {37, "21"}, {38, "IENA-1"},
};

/// Notes in which order the widgets change.
class ChangeRecorder : public QObject
{
public:
    explicit ChangeRecorder(const GatewayPanel &panel)
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

/// In which order the panel applies the fields of a status line.
class TstGatewayZrtStatusOrder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }

    void fieldsAreAppliedInTheirOrder();
};

void TstGatewayZrtStatusOrder::fieldsAreAppliedInTheirOrder()
{
    GatewayPanel p;
    p.receiveStatus(kFirst);
    ChangeRecorder recorder(p);
    p.receiveStatus(kSecond);
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

QTEST_MAIN(TstGatewayZrtStatusOrder)
#include "tst_gatewayzrt_statusorder.moc"
