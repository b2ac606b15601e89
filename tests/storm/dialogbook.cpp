#include "dialogbook.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>

namespace storm {

namespace {

const QVector<Way> kNoButton{Way::Escape, Way::Close};
const QVector<Way> kOneButton{Way::Escape, Way::Close, Way::Accept};
const QVector<Way> kTwoButtons{Way::Escape, Way::Close, Way::Accept, Way::Refuse};

/// Buttons that stand in no button box, by their names.
QStringList buttonNames(Way way)
{
    if (way == Way::Accept)
        return {QStringLiteral("openBtn"), QStringLiteral("OkBtn"), QStringLiteral("okButton")};
    return {QStringLiteral("cancelBtn"), QStringLiteral("CancelBtn")};
}

bool isFor(Way way, QDialogButtonBox::ButtonRole role)
{
    if (way == Way::Accept)
        return role == QDialogButtonBox::AcceptRole || role == QDialogButtonBox::YesRole;
    return role == QDialogButtonBox::RejectRole || role == QDialogButtonBox::NoRole;
}

} // namespace

QString nameOf(Way way)
{
    switch (way) {
    case Way::Escape:
        return QStringLiteral("Escape");
    case Way::Close:
        return QStringLiteral("close");
    case Way::Accept:
        return QStringLiteral("accept");
    case Way::Refuse:
        return QStringLiteral("refuse");
    }
    return {};
}

const QVector<DialogKind> &dialogKinds()
{
    static const QString none;
    static const QString gateway = QStringLiteral("GatewayZRT");
    static const QString report = QStringLiteral("SystemReport");
    static const QString update = QStringLiteral("FirmwareUpdate");
    static const QVector<DialogKind> kinds{
        {QStringLiteral("PortLister"), none, kTwoButtons},
        {QStringLiteral("ComConfigBox"), QStringLiteral("PortLister"), kOneButton},
        {QStringLiteral("versionBox"), none, kOneButton},
        {QStringLiteral("Dialog_ManualOffset"), none, kTwoButtons},
        {QStringLiteral("ChangeModuleType"), none, kTwoButtons},
        {QStringLiteral("filterWarningBox"), none, kOneButton},
        {QStringLiteral("specialRangeBox"), none, kTwoButtons},
        {QStringLiteral("PowerSettingsDialog"), none, kTwoButtons},
        {QStringLiteral("VX_SamplingRates"), none, kNoButton},
        {gateway, none, kNoButton},
        {QStringLiteral("MinMaxDialog"), gateway, kTwoButtons},
        {QStringLiteral("ExternIpAndPort"), gateway, kTwoButtons},
        {QStringLiteral("addressConfirmation"), gateway, kTwoButtons},
        {QStringLiteral("ChangeGatewayDialog"), gateway, kTwoButtons},
        {QStringLiteral("rebootConfirmation"), gateway, kTwoButtons},
        {QStringLiteral("restartConfirmation"), gateway, kTwoButtons},
        {report, none, kNoButton},
        {QStringLiteral("saveDialog"), report, kTwoButtons},
        {QStringLiteral("replaceBox"), report, kTwoButtons},
        {QStringLiteral("notSavedBox"), report, kOneButton},
        {QStringLiteral("printDialog"), report, kTwoButtons},
        {update, none, kNoButton},
        {QStringLiteral("firmwareFileDialog"), update, kTwoButtons},
        {QStringLiteral("failureBox"), update, kOneButton},
        {QStringLiteral("abortBox"), update, kTwoButtons},
        {QStringLiteral("HelpWindow"), none, kNoButton},
        {QStringLiteral("HelpEngine"), none, {Way::Close}},
        {QStringLiteral("WarningBox"), none, kOneButton},
    };
    return kinds;
}

const DialogKind *dialogKind(const QString &name)
{
    for (const DialogKind &kind : dialogKinds()) {
        if (kind.name == name)
            return &kind;
    }
    return nullptr;
}

QString dialogName(const QWidget &dialog)
{
    const QString className = QString::fromLatin1(dialog.metaObject()->className());
    if (!className.startsWith(QLatin1Char('Q')))
        return className;
    return dialog.objectName().isEmpty() ? className : dialog.objectName();
}

bool isDialog(const QObject &object)
{
    if (!object.isWidgetType())
        return false;
    const auto &widget = static_cast<const QWidget &>(object);
    return widget.isWindow() && (widget.inherits("QDialog") || widget.inherits("HelpEngine"));
}

bool isOfTheLibrary(const QWidget &dialog)
{
    const bool isItsClass = dialog.metaObject()->className()[0] == 'Q';
    const QWidget *opener = dialog.parentWidget();
    while (isItsClass && opener) {
        if (opener->inherits("QFileDialog") || opener->inherits("QAbstractPrintDialog"))
            return true;
        opener = opener->parentWidget();
    }
    return false;
}

QAbstractButton *buttonOf(const QWidget &dialog, Way way)
{
    if (way != Way::Accept && way != Way::Refuse)
        return nullptr;
    for (const QString &name : buttonNames(way)) {
        if (auto *button = dialog.findChild<QAbstractButton *>(name))
            return button;
    }
    for (const auto *box : dialog.findChildren<QDialogButtonBox *>()) {
        for (QAbstractButton *button : box->buttons()) {
            if (isFor(way, box->buttonRole(button)))
                return button;
        }
    }
    return nullptr;
}

DialogBook::DialogBook(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
}

DialogBook::~DialogBook()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

void DialogBook::expectLeave(QWidget *dialog, Way way)
{
    m_leaving = dialog;
    m_way = way;
}

bool DialogBook::eventFilter(QObject *watched, QEvent *event)
{
    const bool isShow = event->type() == QEvent::Show;
    if ((!isShow && event->type() != QEvent::Hide) || event->spontaneous() || !isDialog(*watched))
        return false;
    auto &dialog = static_cast<QWidget &>(*watched);
    const QString name = dialogName(dialog);
    Count &count = m_counts[name];
    if (isShow) {
        ++count.opened;
        if (!dialogKind(name) && !isOfTheLibrary(dialog) && !m_strangers.contains(name))
            m_strangers.append(name);
    } else if (m_leaving == &dialog) {
        ++count.left[m_way];
        m_leaving.clear();
    } else {
        ++count.byItself;
    }
    return false;
}

QVector<Way> DialogBook::missingWays(const DialogKind &kind) const
{
    const Count count = m_counts.value(kind.name);
    QVector<Way> ways;
    for (const Way way : kind.ways) {
        if (count.left.value(way) == 0)
            ways.append(way);
    }
    return ways;
}

QStringList DialogBook::missing() const
{
    QStringList names;
    for (const DialogKind &kind : dialogKinds()) {
        if (!missingWays(kind).isEmpty())
            names.append(kind.name);
    }
    return names;
}

int DialogBook::openings() const
{
    int sum = 0;
    for (const Count &count : m_counts)
        sum += count.opened;
    return sum;
}

QStringList DialogBook::report() const
{
    QStringList lines;
    for (auto entry = m_counts.cbegin(); entry != m_counts.cend(); ++entry) {
        QStringList ways;
        for (auto way = entry->left.cbegin(); way != entry->left.cend(); ++way)
            ways.append(QStringLiteral("%1 %2").arg(nameOf(way.key())).arg(way.value()));
        if (entry->byItself > 0)
            ways.append(QStringLiteral("by itself %1").arg(entry->byItself));
        if (m_strangers.contains(entry.key()))
            ways.append(QStringLiteral("nobody knows it"));
        lines.append(QStringLiteral("%1 opened %2: %3")
                         .arg(entry.key(), QString::number(entry->opened), ways.join(QStringLiteral(", "))));
    }
    return lines;
}

} // namespace storm
