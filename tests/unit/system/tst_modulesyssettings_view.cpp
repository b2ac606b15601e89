#include "base/gui/fonts.h"
#include "support/childbyname.h"
#include "support/dialoglook.h"
#include "support/virtualtime.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

/// The part of the panel itself: its dialogs have parts of the same names.
template <typename T>
T *part(const ModuleSysSettings_View &view, const char *name)
{
    return childByName<T>(childByName<QGroupBox>(&view, "groupBox"), name);
}

QFont fontOf(const ModuleSysSettings_View &view, const char *name)
{
    return part<QWidget>(view, name)->font();
}

QString text(const ModuleSysSettings_View &view, const char *name)
{
    return part<QLabel>(view, name)->text();
}

QPushButton *rateCell(const ModuleSysSettings_View &view)
{
    return childByName<QPushButton>(childByName<VX_SamplingRates>(&view, "samplingRatesDialog"), "16,2500");
}

} // namespace

class TstModuleSysSettingsView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void captionsAndToolTips_data();
    void captionsAndToolTips();
    void panelHasItsGroup();
    void fontsAreAsAgreed_data();
    void fontsAreAsAgreed();
    void valuesGoToTheirLabels();
    void ratesCannotBeTyped_data();
    void ratesCannotBeTyped();
    void ratesAreShownInBlack();
    void tableIsMarkedBeforeTheFieldChanges();
    void buttonOpensTheTableModally();
    void tableCanBeOpenedAgain();
    void tableIsDeadWhenOpenedBeforeASystemWasRead();
    void choiceInTheTableIsPassedOn();
    void switchesTellTheRowsBeforeTheDevice();
    void controlsHaveAccessibleNames();
    void tabOrderIsReadingOrder();

private:
    VirtualTime m_time;
};

void TstModuleSysSettingsView::captionsAndToolTips_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    const auto row = [](const char *name, const char *text, const char *toolTip = "") {
        QTest::newRow(name) << QString(name) << QString(text) << QString(toolTip);
    };
    row("label_Titel", "Torvex");
    row("label_2", "System Settings");
    row("label_Modules", "Modules:");
    row("label_ModulesNumber", "x");
    row("label_Channels", "Channels:");
    row("label_ChannelsNumber", "x");
    row("label_PoweringModeText", "Powering Mode:");
    row("label_PoweringMode", "inductive");
    row("label_DataTransmissionText", "Data Transmission:");
    row("label_DataTransmission", "inductive");
    row("bitrateConfigBtn", "Bitrate Config", "configure PCM bitrate and number of channels");
    row("label_SamplingRate", "Sampling Rate");
    row("lineEdit_SamplingRate", "");
    row("label_SamplesUnit", " Samples/s");
    row("label_BitRate", "Bit Rate (kBit/s)");
    row("lineEdit_BitRate", "");
    row("tvxGateway", "Config TVX-Gateway");
    row("label", "Shunt sel.");
    row("loadPreselBtn", "On", "activate preselected shunts");
    row("loadPreselBtn_off", "Off", "deactivate all shunts");
}

void TstModuleSysSettingsView::captionsAndToolTips()
{
    QFETCH(QString, name);
    const ModuleSysSettings_View panel(m_time);
    const auto *widget = part<QWidget>(panel, qPrintable(name));
    QTEST(widget->property("text").toString(), "text");
    QTEST(widget->toolTip(), "toolTip");
}

void TstModuleSysSettingsView::panelHasItsGroup()
{
    const ModuleSysSettings_View view(m_time);
    QVERIFY(childByName<QGroupBox>(&view, "groupBox"));
}

void TstModuleSysSettingsView::fontsAreAsAgreed_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<bool>("bold");
    QTest::newRow("label_2") << 12 << false;
    QTest::newRow("label_Titel") << 15 << true;
    QTest::newRow("bitrateConfigBtn") << 12 << false;
    QTest::newRow("tvxGateway") << 12 << false;
    QTest::newRow("lineEdit_BitRate") << 12 << false;
    QTest::newRow("label") << 12 << false;
}

void TstModuleSysSettingsView::fontsAreAsAgreed()
{
    QFETCH(int, pixels);
    QFETCH(bool, bold);
    const ModuleSysSettings_View view(m_time);
    const QFont font = fontOf(view, QTest::currentDataTag());
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
    QCOMPARE(font.pixelSize(), pixels);
    QCOMPARE(font.bold(), bold);
}

void TstModuleSysSettingsView::valuesGoToTheirLabels()
{
    ModuleSysSettings_View view(m_time);
    view.setModulesNumber(12);
    view.setChannelsNumber(24);
    view.setPoweringMode(QStringLiteral("one"));
    view.setDataTransmission(QStringLiteral("two"));
    QCOMPARE(text(view, "label_ModulesNumber"), QStringLiteral("12"));
    QCOMPARE(text(view, "label_ChannelsNumber"), QStringLiteral("24"));
    QCOMPARE(text(view, "label_PoweringMode"), QStringLiteral("one"));
    QCOMPARE(text(view, "label_DataTransmission"), QStringLiteral("two"));
}

void TstModuleSysSettingsView::ratesCannotBeTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("bit rate") << "lineEdit_BitRate";
    QTest::newRow("sampling rate") << "lineEdit_SamplingRate";
}

void TstModuleSysSettingsView::ratesCannotBeTyped()
{
    QFETCH(QString, name);
    ModuleSysSettings_View view(m_time);
    view.setBitRate(QStringLiteral("2500 (16ch)"));
    view.setSamplingRate(QStringLiteral("3000"));
    view.show();
    auto *edit = childByName<QLineEdit>(&view, qPrintable(name));
    const QString before = edit->text();
    QVERIFY(!before.isEmpty());
    QTest::mouseClick(edit, Qt::LeftButton);
    QTest::keyClicks(edit, QStringLiteral("77"));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Delete);
    QCOMPARE(edit->text(), before);
}

void TstModuleSysSettingsView::ratesAreShownInBlack()
{
    ModuleSysSettings_View view(m_time);
    view.setBitRate(QString());
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_BitRate")->styleSheet(), QStringLiteral("color:black"));
    view.setSamplingRate(QString());
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_SamplingRate")->styleSheet(),
             QStringLiteral("color:black"));
}

void TstModuleSysSettingsView::tableIsMarkedBeforeTheFieldChanges()
{
    ModuleSysSettings_View view(m_time);
    emit view.Signal_EnableSamplingRate();
    view.setBitRate(QStringLiteral("1250 8"));
    const auto *cell = rateCell(view);
    QStringList styles;
    connect(childByName<QLineEdit>(&view, "lineEdit_BitRate"), &QLineEdit::textChanged, this,
            [&] { styles << cell->styleSheet(); });
    view.setBitRate(QStringLiteral("2500 16"));
    QCOMPARE(styles, QStringList{"border: 2px solid blue"});
}

void TstModuleSysSettingsView::buttonOpensTheTableModally()
{
    ModuleSysSettings_View view(m_time);
    view.show();
    auto *dialog = childByName<VX_SamplingRates>(&view, "samplingRatesDialog");
    QVERIFY(!dialog->isVisible());
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), dialog);
}

void TstModuleSysSettingsView::tableCanBeOpenedAgain()
{
    ModuleSysSettings_View view(m_time);
    view.show();
    emit view.Signal_EnableSamplingRate();
    view.setBitRate(QStringLiteral("2500 16"));
    auto *dialog = childByName<VX_SamplingRates>(&view, "samplingRatesDialog");
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
        QVERIFY(dialog->isVisible());
        QCOMPARE(childByName<QPushButton>(dialog, "16,2500")->styleSheet(),
                 QStringLiteral("border: 2px solid blue"));
        dialog->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!dialog->isVisible());
    }
}

void TstModuleSysSettingsView::tableIsDeadWhenOpenedBeforeASystemWasRead()
{
    ModuleSysSettings_View view(m_time);
    view.show();
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QSignalSpy rates(&view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(rateCell(view), Qt::LeftButton);
    QCOMPARE(rates.count(), 0);
}

void TstModuleSysSettingsView::choiceInTheTableIsPassedOn()
{
    ModuleSysSettings_View view(m_time);
    view.show();
    emit view.Signal_EnableSamplingRate();
    QSignalSpy rates(&view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QTest::mouseClick(rateCell(view), Qt::LeftButton);
    QCOMPARE(rates.count(), 1);
    QCOMPARE(rates.at(0), (QVariantList{"2500", "16"})); // bit rate first
    emit view.Signal_DisableSamplingRate();
    QTest::mouseClick(rateCell(view), Qt::LeftButton);
    QCOMPARE(rates.count(), 1);
}

void TstModuleSysSettingsView::switchesTellTheRowsBeforeTheDevice()
{
    ModuleSysSettings_View view(m_time);
    QStringList events;
    connect(&view, &ModuleSysSettings_View::Signal_ldPresel, this,
            [&](const GroupCommand &group) { events.append(QStringLiteral("group %1").arg(group.command)); });
    connect(&view, &ModuleSysSettings_View::Signal_SendChannelT1Data, this,
            [&] { events.append("request"); });
    view.setPreselExec();
    view.clearPreselExec();
    QCOMPARE(events, (QStringList{"group 10", "request", "group 11", "request"}));
}

void TstModuleSysSettingsView::controlsHaveAccessibleNames()
{
    const ModuleSysSettings_View view(m_time);
    QMap<QString, QString> names;
    const auto widgets = childByName<QWidget>(&view, "groupBox")->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (widget->focusPolicy() != Qt::NoFocus)
            names.insert(widget->objectName(), widget->accessibleName());
    }
    QCOMPARE(names, (QMap<QString, QString>{
                        {"bitrateConfigBtn", "Bitrate configuration"},
                        {"lineEdit_SamplingRate", "Sampling rate in samples per second"},
                        {"lineEdit_BitRate", "Bit rate in kBit/s"},
                        {"tvxGateway", "Gateway configuration"},
                        {"loadPreselBtn", "Preselected shunts on"},
                        {"loadPreselBtn_off", "All shunts off"},
                    }));
}

void TstModuleSysSettingsView::tabOrderIsReadingOrder()
{
    ModuleSysSettings_View view(m_time);
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    childByName<QPushButton>(&view, "bitrateConfigBtn")->setFocus();
    QCOMPARE(dialoglook::tabOrder(view),
             (QStringList{"bitrateConfigBtn", "lineEdit_SamplingRate", "lineEdit_BitRate", "tvxGateway",
                          "loadPreselBtn", "loadPreselBtn_off"}));
}

QTEST_MAIN(TstModuleSysSettingsView)
#include "tst_modulesyssettings_view.moc"
