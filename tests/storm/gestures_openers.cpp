#include "gestures.h"

#include "hands.h"
#include "program.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace storm {

QWidget *Gestures::openWindow(const QString &name)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && dialogName(*widget) == name)
            return widget;
    }
    return nullptr;
}

QWidget *Gestures::inWindow(QWidget *window, const char *name)
{
    QList<QWidget *> found;
    if (!window)
        return nullptr;
    for (QWidget *widget : window->findChildren<QWidget *>(QString::fromLatin1(name))) {
        if (widget->window() == window && widget->isVisible() && widget->isEnabled())
            found.append(widget);
    }
    return found.isEmpty() ? nullptr : m_chance.oneOf(found);
}

QWidget *Gestures::inMainWindow(const char *name)
{
    return inWindow(m_program.window(), name);
}

QString Gestures::clickIn(QWidget *window, const char *name)
{
    QWidget *widget = inWindow(window, name);
    if (!widget)
        return {};
    m_hands.clickAt(widget, QPoint(qMin(8, widget->width() / 2), widget->height() / 2));
    return QStringLiteral("click ") + QString::fromLatin1(name);
}

QString Gestures::clickInMain(const char *name)
{
    QWidget *widget = inMainWindow(name);
    if (!widget)
        return {};
    scrollTo(widget);
    m_hands.click(widget);
    return QStringLiteral("click ") + QString::fromLatin1(name);
}

QString Gestures::openFilterWarning()
{
    for (int tries = 0; tries < 4; ++tries) {
        auto *box = qobject_cast<QSpinBox *>(inMainWindow("filterSpinBox"));
        if (!box || box->inherits("CustomT3SpinBox"))
            continue;
        scrollTo(box);
        m_hands.clickAt(box, QPoint(6, box->height() / 2));
        m_hands.typeOver(QString::number(m_chance.number(10, 190)));
        m_hands.key(Qt::Key_Tab);
        return QStringLiteral("type a low filter");
    }
    return {};
}

QString Gestures::openSpecialRange()
{
    auto *box = qobject_cast<QComboBox *>(inMainWindow("comboBox_TemperatureRange"));
    if (!box || box->count() < 2)
        return {};
    scrollTo(box);
    pick(box, m_chance.number(1, box->count() - 1), Qt::NoModifier);
    return QStringLiteral("pick a special range");
}

QString Gestures::openFromReport(const QString &dialog)
{
    QWidget *report = openWindow(QStringLiteral("SystemReport"));
    const auto isOn = [this, report](const char *kind) {
        const auto *box = qobject_cast<QCheckBox *>(inWindow(report, kind));
        return box && box->isChecked();
    };
    const auto choose = [&](const char *kind, const char *button) {
        return isOn(kind) ? clickIn(report, button) : clickIn(report, kind);
    };
    if (dialog == QLatin1String("printDialog"))
        return choose("oneModuleCheckbox", "printBtn");
    if (dialog == QLatin1String("notSavedBox"))
        return choose("systemExcelCheckbox", "saveCsvBtn");
    switch (m_chance.number(0, 2)) {
    case 0:
        return choose("systemExcelCheckbox", "saveCsvBtn");
    case 1:
        return choose("systemPDFcheckBox", "saveAllPdf");
    default:
        return choose("oneModuleCheckbox", "savePDF");
    }
}

QString Gestures::openFromUpdate(const QString &dialog)
{
    QWidget *update = openWindow(QStringLiteral("FirmwareUpdate"));
    const auto *path = qobject_cast<QLineEdit *>(inWindow(update, "filePathEdit"));
    const auto *flash = qobject_cast<QPushButton *>(inWindow(update, "flashButton"));
    const bool isFlashing = flash && flash->text() == QLatin1String("Abort");
    if (isFlashing)
        return dialog == QLatin1String("abortBox") ? clickIn(update, "flashButton") : QString();
    if (dialog == QLatin1String("firmwareFileDialog"))
        return clickIn(update, "selectFileButton");
    const QString wanted =
        dialog == QLatin1String("abortBox") ? Program::largeImage() : Program::wrongImage();
    m_wantedImage = wanted;
    return clickIn(update, path && path->text().endsWith(wanted) ? "flashButton" : "selectFileButton");
}

QString Gestures::open(const QString &dialog)
{
    static const QMap<QString, const char *> openers{
        {QStringLiteral("PortLister"), "configButton"},
        {QStringLiteral("Dialog_ManualOffset"), "pushButton_ManualOffset"},
        {QStringLiteral("PowerSettingsDialog"), "pushButton_powModType"},
        {QStringLiteral("VX_SamplingRates"), "bitrateConfigBtn"},
        {QStringLiteral("GatewayZRT"), "tvxGateway"},
        {QStringLiteral("SystemReport"), "systemReportButton"},
        {QStringLiteral("HelpWindow"), "helpButton"},
    };
    static const QMap<QString, const char *> gatewayOpeners{
        {QStringLiteral("MinMaxDialog"), "minBox"},
        {QStringLiteral("ExternIpAndPort"), "setExtAddress"},
        {QStringLiteral("addressConfirmation"), "ChangeGateway"},
        {QStringLiteral("ChangeGatewayDialog"), "ChangeGateway"},
        {QStringLiteral("rebootConfirmation"), "rebootBtn"},
        {QStringLiteral("restartConfirmation"), "restartBtn"},
    };
    if (openers.contains(dialog))
        return clickInMain(openers.value(dialog));
    if (gatewayOpeners.contains(dialog)) {
        QWidget *panel = openWindow(QStringLiteral("GatewayZRT"));
        const QString done = clickIn(panel, gatewayOpeners.value(dialog));
        if (!done.isEmpty() || dialog != QLatin1String("ExternIpAndPort"))
            return done;
        return clickIn(panel, "tcpConnect_Btn"); // the button is hidden in the mode of a server
    }
    if (dialog == QLatin1String("ComConfigBox")) {
        QWidget *lister = openWindow(QStringLiteral("PortLister"));
        const QString done = clickIn(lister, "portConfigBox");
        return done.isEmpty() ? clickIn(lister, "checkBoxComprt") : done;
    }
    if (dialog == QLatin1String("versionBox"))
        return clickInMain(m_chance.happens(0.3) ? "pushButton_modType" : "pushButton_DeviceButton");
    if (dialog == QLatin1String("ChangeModuleType"))
        return clickInMain(m_chance.happens(0.5) ? "pushButton_ChA" : "pushButton_ChB");
    if (dialog == QLatin1String("filterWarningBox"))
        return openFilterWarning();
    if (dialog == QLatin1String("specialRangeBox"))
        return openSpecialRange();
    if (dialog == QLatin1String("HelpEngine") || dialog == QLatin1String("FirmwareUpdate")) {
        const bool isManual = dialog == QLatin1String("HelpEngine");
        m_hands.activate(m_program.window());
        m_hands.key(isManual ? Qt::Key_F1 : Qt::Key_U, isManual ? Qt::NoModifier : Qt::ControlModifier);
        return QStringLiteral("press the key for ") + dialog;
    }
    const DialogKind *kind = dialogKind(dialog);
    if (kind && kind->host == QLatin1String("SystemReport"))
        return openFromReport(dialog);
    if (kind && kind->host == QLatin1String("FirmwareUpdate"))
        return openFromUpdate(dialog);
    return {};
}

} // namespace storm
