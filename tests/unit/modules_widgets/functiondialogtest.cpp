#include "functiondialogtest.h"

#include "support/dialoglook.h"

#include <QButtonGroup>
#include <QRadioButton>

void FunctionDialogTest::init()
{
    m_dialog = std::make_unique<ChangeModuleType>();
    m_events.clear();
    connect(m_dialog.get(), &ChangeModuleType::moduleSelected, this, [this](uchar channel, uchar type) {
        m_events.append(QStringLiteral("function %1 %2").arg(channel).arg(type));
        m_events.append(m_dialog->isVisible() ? "shown" : "hidden");
    });
    connect(m_dialog.get(), &ChangeModuleType::voltageSupply, this,
            [this](uchar channel, uchar on, uchar code) {
                m_events.append(QStringLiteral("supply %1 %2 %3").arg(channel).arg(on).arg(code));
            });
    connect(m_dialog.get(), &ChangeModuleType::Signal_ShiftClickCommand, this, [this](GroupCommand command) {
        m_events.append(
            QStringLiteral("group %1 %2 %3").arg(command.moduleType).arg(command.command).arg(command.value));
        m_events.append(m_dialog->isVisible() ? "shown" : "hidden");
    });
}

void FunctionDialogTest::cleanup()
{
    m_dialog.reset();
    dialoglook::resetFont();
}

QString FunctionDialogTest::checked() const
{
    const QAbstractButton *button = m_dialog->findChild<QButtonGroup *>("modulesGrp")->checkedButton();
    return button ? button->objectName() : QString();
}

void FunctionDialogTest::open(const QString &function, const QString &number)
{
    m_dialog->Slot_Channel({function, QStringLiteral("Voltage"), number});
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void FunctionDialogTest::choose(const char *button)
{
    auto *radio = child<QRadioButton>(button);
    QTest::mouseClick(radio, Qt::LeftButton, Qt::NoModifier, QPoint(8, radio->height() / 2));
}

void FunctionDialogTest::sendKey(QWidget *widget, Qt::Key key, Qt::KeyboardModifiers modifiers, bool repeat)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, QString(), repeat);
    QApplication::sendEvent(widget, &event);
}
