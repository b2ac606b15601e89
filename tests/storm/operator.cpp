#include "operator.h"

#include "comparison.h"
#include "hands.h"
#include "program.h"
#include "protocol/communication.h"
#include "stallmeter.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <cstdio>

namespace storm {

namespace {

constexpr std::chrono::milliseconds kPace(8);
constexpr std::chrono::milliseconds kFastPace(1);
constexpr int kMostTries = 25; ///< to open a dialog, before another one is tried
constexpr qint64 kDeadLinkMs = 700;

const QString kPanel = QStringLiteral("GatewayZRT");

/// The dialog behind which another one comes up when it is accepted.
QString stepTo(const QString &dialog)
{
    static const QMap<QString, QString> steps{
        {QStringLiteral("notSavedBox"), QStringLiteral("saveDialog")},
        {QStringLiteral("replaceBox"), QStringLiteral("saveDialog")},
        {QStringLiteral("ChangeGatewayDialog"), QStringLiteral("addressConfirmation")},
        {QStringLiteral("abortBox"), QStringLiteral("firmwareFileDialog")},
        {QStringLiteral("failureBox"), QStringLiteral("firmwareFileDialog")},
    };
    return steps.value(dialog);
}

bool isFlashing(const QWidget &update)
{
    const auto *button = update.findChild<QPushButton *>(QStringLiteral("flashButton"));
    return button && button->text() == QLatin1String("Abort");
}

} // namespace

Operator::Operator(Program &program, DialogBook &book, StallMeter &meter, quint32 seed, QObject *parent)
    : QObject(parent)
    , m_program(program)
    , m_book(book)
    , m_meter(meter)
    , m_hands(new Hands(this))
    , m_chance(seed)
    , m_gestures(program, *m_hands, m_chance, book)
{
    connect(m_hands, &Hands::idle, this, &Operator::decide);
}

Operator::~Operator() = default;

int Operator::actCount() const
{
    return m_hands->actCount();
}

void Operator::setMode(Mode mode)
{
    m_mode = mode;
    m_goal.clear();
    m_hands->setPace(mode == Mode::Work ? kPace : kFastPace);
    if (mode == Mode::Rest)
        m_hands->stop();
    else
        m_hands->start();
}

void Operator::work()
{
    setMode(Mode::Work);
}

void Operator::visit(const QStringList &dialogs)
{
    m_tour = dialogs;
    setMode(Mode::Visit);
}

QStringList Operator::unvisited() const
{
    QStringList names;
    for (const QString &name : m_tour) {
        if (!m_book.missingWays(*dialogKind(name)).isEmpty())
            names.append(name);
    }
    return names;
}

void Operator::leaveAll(const std::optional<Comm_Type> &link)
{
    m_wantedLink = link;
    setMode(Mode::LeaveAll);
}

void Operator::leaveDialogs()
{
    setMode(Mode::LeaveDialogs);
}

void Operator::connectPanel()
{
    setMode(Mode::ConnectPanel);
}

void Operator::rest()
{
    setMode(Mode::Rest);
}

void Operator::decide()
{
    m_book.forgetLeave();
    const QString gesture = nextGesture();
    if (gesture.isEmpty())
        return;
    ++m_gestureCount;
    ++m_byKind[gesture.section(QLatin1Char(' '), 0, 0)];
    m_meter.setActivity(gesture);
    if (m_isVerbose)
        std::printf("  %s\n", qPrintable(gesture));
}

QString Operator::nextGesture()
{
    const Unmeasured unmeasured(m_meter); // to make up one's mind takes no time of the program's
    if (QWidget *popup = QApplication::activePopupWidget())
        return m_gestures.usePopup(popup);
    switch (m_mode) {
    case Mode::Rest:
        return {};
    case Mode::LeaveAll:
    case Mode::LeaveDialogs:
        return leaveNext();
    case Mode::ConnectPanel:
        return connectNext();
    case Mode::Visit:
        return visitNext();
    case Mode::Work:
        break;
    }
    if (isLinkDead()) {
        m_goal = QStringLiteral("PortLister");
        return pursue();
    }
    constexpr double kToTheGoal = 0.4;
    if (m_chance.happens(kToTheGoal)) {
        QStringList all;
        for (const DialogKind &kind : dialogKinds())
            all.append(kind.name);
        chooseGoal(all);
        return pursue();
    }
    QWidget *front = frontDialog();
    return front ? playWith(front) : useMainWindow();
}

QString Operator::visitNext()
{
    const QStringList dialogs = unvisited();
    if (!dialogs.isEmpty()) {
        chooseGoal(dialogs);
        return pursue();
    }
    if (m_tour.contains(kPanel) && !m_hasOpenedLists)
        return openSomeList();
    setMode(Mode::Rest);
    emit done();
    return {};
}

/// A list that is opened for the first time makes its window, which stays as long as the list does. The panel
/// is the dialog that stays and has lists.
QString Operator::openSomeList()
{
    QWidget *front = frontDialog();
    if (!front)
        return m_gestures.open(kPanel);
    if (dialogName(*front) != kPanel)
        return leaveSomehow(front);
    for (auto *list : front->findChildren<QComboBox *>()) {
        if (list->window() != front || list->findChild<QFrame *>(QString(), Qt::FindDirectChildrenOnly))
            continue;
        if (list->isVisible() && list->isEnabled())
            return m_gestures.use(list);
        return m_gestures.connectPanel(front);
    }
    m_hasOpenedLists = true;
    return leaveSomehow(front);
}

QString Operator::connectNext()
{
    QWidget *front = frontDialog();
    const bool isAtPanel = front && dialogName(*front) == kPanel;
    if (front && !isAtPanel)
        return leaveSomehow(front);
    if (!connectedPanel())
        return isAtPanel ? m_gestures.connectPanel(front) : m_gestures.open(kPanel);
    if (isAtPanel)
        return m_gestures.leave(front, Way::Close); // which hides it only
    setMode(Mode::Rest);
    emit done();
    return {};
}

QList<QWidget *> Operator::openDialogs()
{
    QList<QWidget *> dialogs;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible() && isDialog(*widget))
            dialogs.append(widget);
    }
    return dialogs;
}

QWidget *Operator::frontDialog()
{
    return QApplication::activeModalWidget();
}

/// Whether the link that was chosen last leads to the chain, if that is there. A port that could not be
/// opened when it was chosen is not tried again by the program, an address is.
bool Operator::isLinkLive() const
{
    const model_Namespace::Settings &link = m_program.link();
    if (link.commType == Comm_Type::Serial)
        return link.portName == QStringLiteral("COM%1").arg(kLivePort) &&
               m_program.app().communication()->isCommunicationChannelOpen();
    return link.ipAddress == m_program.addresses().device;
}

/// Whether it is the one that is to be used, if that matters now.
bool Operator::isLinkWanted() const
{
    const bool matters = m_mode == Mode::LeaveAll && m_wantedLink;
    return !matters || m_program.link().commType == *m_wantedLink;
}

bool Operator::isLinkDead()
{
    if (isLinkLive())
        m_deadSince.invalidate();
    else if (!m_deadSince.isValid())
        m_deadSince.start();
    return m_deadSince.isValid() && m_deadSince.elapsed() > kDeadLinkMs;
}

void Operator::chooseGoal(const QStringList &dialogs)
{
    if (dialogs.contains(m_goal) && m_tries < kMostTries)
        return;
    m_tries = 0;
    m_goal = m_chance.oneOf(dialogs);
}

QString Operator::pursue()
{
    ++m_tries;
    const DialogKind &goal = *dialogKind(m_goal);
    QWidget *front = frontDialog();
    QWidget *wanted = Gestures::openWindow(goal.name);
    if (wanted && (!front || front == wanted)) {
        if (isLinkDead() && goal.name == QLatin1String("PortLister")) {
            m_gestures.chooseLink(wanted, true);
            return m_gestures.leaveAccepting(wanted);
        }
        if (m_chance.happens(0.3)) {
            const QString done = m_gestures.work(wanted);
            if (!done.isEmpty())
                return done;
        }
        m_tries = kMostTries; // this was it; the next goal may be another one
        return leaveSomehow(wanted);
    }
    return openGoal(goal, front);
}

QString Operator::openGoal(const DialogKind &goal, QWidget *front)
{
    if (front && dialogName(*front) == stepTo(goal.name))
        return m_gestures.leave(front, Way::Accept);
    const bool isAtHost = front && dialogName(*front) == goal.host;
    if (isAtHost) {
        const QString done = m_gestures.open(goal.name);
        return done.isEmpty() ? m_gestures.work(front) : done;
    }
    if (front)
        return leaveSomehow(front);
    if (goal.name == QLatin1String("WarningBox")) {
        emit mismatchWanted();
        return useMainWindow();
    }
    // The host may be a window that keeps nobody from the others.
    const bool isHostThere = goal.host.isEmpty() || Gestures::openWindow(goal.host);
    const QString done = m_gestures.open(isHostThere ? goal.name : goal.host);
    return done.isEmpty() ? useMainWindow() : done;
}

Way Operator::someWay(const QWidget &dialog)
{
    const DialogKind *kind = dialogKind(dialogName(dialog));
    if (!kind)
        return m_chance.oneOf(QVector<Way>{Way::Escape, Way::Close});
    const QVector<Way> missing = m_book.missingWays(*kind);
    return m_chance.oneOf(missing.isEmpty() ? kind->ways : missing);
}

QString Operator::leaveSomehow(QWidget *dialog)
{
    return m_gestures.leave(dialog, someWay(*dialog));
}

QString Operator::playWith(QWidget *front)
{
    constexpr double kLeave = 0.35;
    const QString done = m_chance.happens(kLeave) ? QString() : m_gestures.work(front);
    return done.isEmpty() ? leaveSomehow(front) : done;
}

QString Operator::useMainWindow()
{
    // Windows that keep nobody from the main one.
    const QList<QWidget *> dialogs = openDialogs();
    if (!dialogs.isEmpty() && m_chance.happens(0.3))
        return playWith(m_chance.oneOf(dialogs));
    if (m_chance.happens(0.05))
        return m_gestures.pressSomeKey();
    const Gestures::Controls controls = Gestures::controlsOf(*m_program.window());
    constexpr double kRow = 0.8;
    if (!controls.rows.isEmpty() && m_chance.happens(kRow))
        return m_gestures.use(m_chance.oneOf(controls.rows));
    return controls.others.isEmpty() ? QString() : m_gestures.use(m_chance.oneOf(controls.others));
}

QString Operator::leaveNext()
{
    if (QWidget *front = frontDialog()) {
        if (dialogName(*front) == QLatin1String("abortBox"))
            return m_gestures.leave(front, Way::Accept);
        const bool isPortLister = dialogName(*front) == QLatin1String("PortLister");
        if (isPortLister && m_mode == Mode::LeaveAll && !(isLinkLive() && isLinkWanted())) {
            m_gestures.chooseLink(front, true, m_wantedLink);
            return m_gestures.leaveAccepting(front);
        }
        return m_gestures.leave(front, m_chance.happens(0.5) ? Way::Escape : Way::Close);
    }
    for (QWidget *dialog : openDialogs()) {
        if (dialogName(*dialog) == QLatin1String("FirmwareUpdate") && isFlashing(*dialog))
            return m_gestures.open(QStringLiteral("abortBox"));
        return m_gestures.leave(dialog, Way::Close);
    }
    if (m_mode == Mode::LeaveAll && !(isLinkLive() && isLinkWanted()))
        return m_gestures.open(QStringLiteral("PortLister"));
    setMode(Mode::Rest);
    emit done();
    return {};
}

} // namespace storm
