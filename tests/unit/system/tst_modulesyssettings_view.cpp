#include "base/gui/fonts.h"
#include "support/childbyname.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"
#include "unit/modules_widgets/dialoglook.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

constexpr int kWindowWidth = 1160;

QFont fontOf(const ModuleSysSettings_View &view, const char *name)
{
    return childByName<QWidget>(&view, name)->font();
}

QString text(const ModuleSysSettings_View &view, const char *name)
{
    return childByName<QLabel>(&view, name)->text();
}

} // namespace

class TstModuleSysSettingsView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { fonts::installSubstitutions(); }
    void cleanup();
    void labelsReadAsAgreed_data();
    void labelsReadAsAgreed();
    void buttonsReadAsAgreed_data();
    void buttonsReadAsAgreed();
    void rateFieldsBeginEmpty();
    void panelHasItsGroup();
    void fontsAreAsAgreed_data();
    void fontsAreAsAgreed();
    void valuesGoToTheirLabels();
    void valuesAreReadable();
    void ratesAreShownInBlack();
    void buttonOpensTheTableModally();
    void tableCanBeOpenedAgain();
    void tableIsDeadWhenOpenedBeforeASystemWasRead();
    void choiceInTheTableIsPassedOn();
    void gatewayButtonWaitsForItsPanel();
    void switchesTellTheRowsBeforeTheDevice();
    void controlsHaveAccessibleNames();
    void tabOrderFollowsReadingOrder();
    void panelFitsTheWindow_data();
    void panelFitsTheWindow();
    void tableFitsItsWindow_data();
    void tableFitsItsWindow();
};

void TstModuleSysSettingsView::cleanup()
{
    dialoglook::resetFont();
    fonts::installSubstitutions();
}

void TstModuleSysSettingsView::labelsReadAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("label_2") << "System Settings";
    QTest::newRow("label_Titel") << "Torvex";
    QTest::newRow("label_Modules") << "Modules:";
    QTest::newRow("label_ModulesNumber") << "x";
    QTest::newRow("label_Channels") << "Channels:";
    QTest::newRow("label_ChannelsNumber") << "x";
    QTest::newRow("label_PoweringModeText") << "Powering Mode:";
    QTest::newRow("label_PoweringMode") << "inductive";
    QTest::newRow("label_DataTransmissionText") << "Data Transmission:";
    QTest::newRow("label_DataTransmission") << "inductive";
    QTest::newRow("label_SamplingRate") << "Sampling Rate";
    QTest::newRow("label_SamplesUnit") << " Samples/s";
    QTest::newRow("label_BitRate") << "Bit Rate (kBit/s)";
    QTest::newRow("label") << "Shunt sel.";
}

void TstModuleSysSettingsView::labelsReadAsAgreed()
{
    const ModuleSysSettings_View view;
    QTEST(text(view, QTest::currentDataTag()), "text");
}

void TstModuleSysSettingsView::buttonsReadAsAgreed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::newRow("bitrateConfigBtn") << "Bitrate Config"
                                      << "configure PCM bitrate and number of channels";
    QTest::newRow("tvxGateway") << "Config TVX-Gateway"
                                << "";
    QTest::newRow("loadPreselBtn") << "On"
                                   << "activate preselected shunts";
    QTest::newRow("loadPreselBtn_off") << "Off"
                                       << "deactivate all shunts";
}

void TstModuleSysSettingsView::buttonsReadAsAgreed()
{
    QFETCH(QString, text);
    QFETCH(QString, toolTip);
    const ModuleSysSettings_View view;
    const auto *button = childByName<QPushButton>(&view, QTest::currentDataTag());
    QCOMPARE(button->text(), text);
    if (!toolTip.isEmpty())
        QCOMPARE(button->toolTip(), toolTip);
}

void TstModuleSysSettingsView::rateFieldsBeginEmpty()
{
    const ModuleSysSettings_View view;
    for (const char *name : {"lineEdit_SamplingRate", "lineEdit_BitRate"})
        QCOMPARE(childByName<QLineEdit>(&view, name)->text(), QString());
}

void TstModuleSysSettingsView::panelHasItsGroup()
{
    const ModuleSysSettings_View view;
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
}

void TstModuleSysSettingsView::fontsAreAsAgreed()
{
    QFETCH(int, pixels);
    QFETCH(bool, bold);
    const ModuleSysSettings_View view;
    const QFont font = fontOf(view, QTest::currentDataTag());
    QCOMPARE(font.family(), QStringLiteral("Segoe UI"));
    QCOMPARE(font.pixelSize(), pixels);
    QCOMPARE(font.bold(), bold);
}

void TstModuleSysSettingsView::valuesGoToTheirLabels()
{
    ModuleSysSettings_View view;
    view.setModulesNumber(12);
    view.setChannelsNumber(24);
    view.setPoweringMode(QStringLiteral("one"));
    view.setDataTransmission(QStringLiteral("two"));
    QCOMPARE(text(view, "label_ModulesNumber"), QStringLiteral("12"));
    QCOMPARE(text(view, "label_ChannelsNumber"), QStringLiteral("24"));
    QCOMPARE(text(view, "label_PoweringMode"), QStringLiteral("one"));
    QCOMPARE(text(view, "label_DataTransmission"), QStringLiteral("two"));
}

void TstModuleSysSettingsView::valuesAreReadable()
{
    ModuleSysSettings_View view;
    view.setBitRate(QStringLiteral("2500 (16ch)"));
    view.setSamplingRate(QStringLiteral("3000"));
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_BitRate")->text(), QStringLiteral("2500 (16ch)"));
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_SamplingRate")->text(), QStringLiteral("3000"));
}

void TstModuleSysSettingsView::ratesAreShownInBlack()
{
    ModuleSysSettings_View view;
    view.setBitRate(QString());
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_BitRate")->styleSheet(), QStringLiteral("color:black"));
    view.setSamplingRate(QString());
    QCOMPARE(childByName<QLineEdit>(&view, "lineEdit_SamplingRate")->styleSheet(),
             QStringLiteral("color:black"));
}

void TstModuleSysSettingsView::buttonOpensTheTableModally()
{
    ModuleSysSettings_View view;
    view.show();
    auto *dialog = childByName<VX_SamplingRates>(&view, "samplingRatesDialog");
    QVERIFY(!dialog->isVisible());
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QVERIFY(dialog->isVisible());
    QCOMPARE(QApplication::activeModalWidget(), dialog);
}

void TstModuleSysSettingsView::tableCanBeOpenedAgain()
{
    ModuleSysSettings_View view;
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
    ModuleSysSettings_View view;
    view.show();
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QSignalSpy rates(&view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(childByName<QPushButton>(&view, "16,2500"), Qt::LeftButton);
    QCOMPARE(rates.count(), 0);
}

void TstModuleSysSettingsView::choiceInTheTableIsPassedOn()
{
    ModuleSysSettings_View view;
    view.show();
    emit view.Signal_EnableSamplingRate();
    QSignalSpy rates(&view, &ModuleSysSettings_View::samplingRates);
    QTest::mouseClick(childByName<QPushButton>(&view, "bitrateConfigBtn"), Qt::LeftButton);
    QTest::mouseClick(childByName<QPushButton>(&view, "16,2500"), Qt::LeftButton);
    QCOMPARE(rates.count(), 1);
    QCOMPARE(rates.at(0), (QVariantList{"2500", "16"})); // bit rate first
    emit view.Signal_DisableSamplingRate();
    QTest::mouseClick(childByName<QPushButton>(&view, "16,2500"), Qt::LeftButton);
    QCOMPARE(rates.count(), 1);
}

void TstModuleSysSettingsView::gatewayButtonWaitsForItsPanel()
{
    const ModuleSysSettings_View view;
    QVERIFY(!childByName<QPushButton>(&view, "tvxGateway")->isEnabled());
}

void TstModuleSysSettingsView::switchesTellTheRowsBeforeTheDevice()
{
    ModuleSysSettings_View view;
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
    const ModuleSysSettings_View view;
    QCOMPARE(dialoglook::withoutAccessibleName(view), QStringList());
}

void TstModuleSysSettingsView::tabOrderFollowsReadingOrder()
{
    ModuleSysSettings_View view;
    view.show();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    childByName<QPushButton>(&view, "bitrateConfigBtn")->setFocus();
    const QStringList order = dialoglook::tabOrder(view);
    for (const QString &name : order) {
        const auto *widget = childByName<QWidget>(&view, name.toLatin1().constData());
        QVERIFY(widget->isEnabled());
    }
    const int on = order.indexOf(QStringLiteral("loadPreselBtn"));
    const int off = order.indexOf(QStringLiteral("loadPreselBtn_off"));
    QVERIFY(on > 0);
    QCOMPARE(off, on + 1);
}

void TstModuleSysSettingsView::panelFitsTheWindow_data()
{
    dialoglook::addFonts();
}

void TstModuleSysSettingsView::panelFitsTheWindow()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    ModuleSysSettings_View view;
    view.setModulesNumber(128);
    view.setChannelsNumber(256);
    view.setPoweringMode(QStringLiteral("inductive"));
    view.setDataTransmission(QStringLiteral("inductive"));
    QVERIFY(view.minimumSizeHint().width() <= kWindowWidth);
    QVERIFY(view.minimumSizeHint().height() <= 80);
    view.resize(kWindowWidth, view.minimumSizeHint().height());
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const auto widgets = view.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        const auto *label = qobject_cast<const QLabel *>(widget);
        if (!label || !label->isVisible() || label->window() != &view)
            continue;
        QVERIFY2(label->fontMetrics().horizontalAdvance(label->text()) <= label->width(),
                 qPrintable(label->objectName()));
        QVERIFY2(label->parentWidget()->rect().contains(label->geometry()), qPrintable(label->objectName()));
    }
}

void TstModuleSysSettingsView::tableFitsItsWindow_data()
{
    dialoglook::addFonts();
}

void TstModuleSysSettingsView::tableFitsItsWindow()
{
    QFETCH(QString, family);
    QVERIFY2(dialoglook::useFont(family), "scripts/install brings this font");
    VX_SamplingRates dialog;
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    const auto cells = dialog.findChildren<QPushButton *>();
    QCOMPARE(cells.size(), 48);
    for (const QPushButton *cell : cells) {
        const QRect inDialog(cell->mapTo(&dialog, QPoint()), cell->size());
        QVERIFY2(dialog.rect().contains(inDialog), qPrintable(cell->objectName()));
        QVERIFY2(cell->width() >= cell->iconSize().width(), qPrintable(cell->objectName()));
        QVERIFY2(cell->height() >= cell->iconSize().height(), qPrintable(cell->objectName()));
    }
    const auto labels = dialog.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        QVERIFY2(label->height() >= label->heightForWidth(label->width()) &&
                     label->width() >= label->minimumSizeHint().width(),
                 qPrintable(label->text()));
}

QTEST_MAIN(TstModuleSysSettingsView)
#include "tst_modulesyssettings_view.moc"
