#include "gestures.h"

#include "hands.h"
#include "program.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QStyleOptionSpinBox>
#include <QTabBar>
#include <QTextBrowser>

namespace storm {

namespace {

using Time = Hands::Time;

constexpr Time kListOpens(15); ///< until the items of a list that was opened are in their places
constexpr int kInTheText = 6;  ///< pixels from the left end

/// What an operator would put the hand on.
bool isControl(const QWidget &widget)
{
    if (!widget.isVisible() || !widget.isEnabled() || widget.width() < 2 || widget.height() < 2)
        return false;
    if (const auto *edit = qobject_cast<const QLineEdit *>(&widget))
        return edit->focusPolicy() != Qt::NoFocus && !edit->parent()->inherits("QAbstractSpinBox") &&
               !edit->parent()->inherits("QComboBox");
    return qobject_cast<const QAbstractButton *>(&widget) || qobject_cast<const QComboBox *>(&widget) ||
           qobject_cast<const QAbstractSpinBox *>(&widget) || qobject_cast<const QTabBar *>(&widget) ||
           qobject_cast<const QTextBrowser *>(&widget) || qobject_cast<const QPlainTextEdit *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget);
}

bool isInARow(const QWidget &widget)
{
    for (const QWidget *parent = widget.parentWidget(); parent; parent = parent->parentWidget()) {
        if (parent->inherits("ModuleDevice_View"))
            return true;
    }
    return false;
}

QString called(const QString &act, const QWidget &control)
{
    return act + QLatin1Char(' ') + control.objectName();
}

} // namespace

Gestures::Gestures(Program &program, Hands &hands, Chance &chance, DialogBook &book)
    : m_program(program)
    , m_hands(hands)
    , m_chance(chance)
    , m_book(book)
{}

Gestures::Controls Gestures::controlsOf(const QWidget &window)
{
    Controls controls;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->window() == &window && isControl(*widget))
            (isInARow(*widget) ? controls.rows : controls.others).append(widget);
    }
    return controls;
}

void Gestures::scrollTo(QWidget *control)
{
    const QPointer<QWidget> wanted = control;
    m_hands.then([wanted] {
        for (QWidget *parent = wanted ? wanted->parentWidget() : nullptr; parent;
             parent = parent->parentWidget()) {
            if (auto *area = qobject_cast<QScrollArea *>(parent)) {
                area->ensureWidgetVisible(wanted);
                return;
            }
        }
    });
}

Qt::KeyboardModifiers Gestures::someModifiers()
{
    const double luck = m_chance.fraction();
    if (luck < 0.15)
        return Qt::ShiftModifier;
    if (luck < 0.18)
        return Qt::AltModifier;
    if (luck < 0.21)
        return Qt::ControlModifier;
    return Qt::NoModifier;
}

QString Gestures::use(QWidget *control)
{
    scrollTo(control);
    if (auto *list = qobject_cast<QComboBox *>(control))
        return useList(list);
    if (auto *box = qobject_cast<QAbstractSpinBox *>(control))
        return useSpinBox(box);
    if (auto *field = qobject_cast<QLineEdit *>(control))
        return useField(field);
    if (auto *view = qobject_cast<QAbstractItemView *>(control))
        return useView(view);
    if (qobject_cast<QTextBrowser *>(control) || qobject_cast<QPlainTextEdit *>(control)) {
        m_hands.turnWheel(control, m_chance.happens(0.5));
        return called(QStringLiteral("turn the wheel over"), *control);
    }
    const double luck = m_chance.fraction();
    const bool isLong = control->objectName() == QLatin1String("helpButton") ||
                        control->objectName() == QLatin1String("pushButton_Autozero");
    if (isLong && luck < 0.03) {
        m_hands.click(control, someModifiers(), Time(2600));
        return called(QStringLiteral("hold"), *control);
    }
    if (luck < 0.08) {
        m_hands.pressAndLeave(control);
        return called(QStringLiteral("press and leave"), *control);
    }
    // The mark of a radio button or check box is at its left end.
    const QPoint place(qMin(8, control->width() / 2), control->height() / 2);
    m_hands.clickAt(control, place, someModifiers());
    if (luck > 0.95)
        m_hands.clickAt(control, place);
    return called(QStringLiteral("click"), *control);
}

void Gestures::pick(QComboBox *box, int index, Qt::KeyboardModifiers keys)
{
    const QPointer<QComboBox> list = box;
    m_hands.clickAt(box, QPoint(4, box->height() / 2));
    m_hands.rest(kListOpens);
    m_hands.then([this, list, index, keys] {
        if (!list || !list->view()->isVisible())
            return;
        const QModelIndex item = list->model()->index(index, list->modelColumn());
        if (!item.isValid())
            return;
        list->view()->scrollTo(item);
        const QRect place = list->view()->visualRect(item) & list->view()->viewport()->rect();
        m_hands.clickAt(list->view()->viewport(), QPoint(place.left() + kInTheText, place.center().y()),
                        keys);
    });
}

QString Gestures::useList(QComboBox *box)
{
    const double luck = m_chance.fraction();
    if (luck < 0.1) {
        m_hands.turnWheel(box, m_chance.happens(0.5));
        return called(QStringLiteral("turn the wheel over"), *box);
    }
    if (luck < 0.2) {
        m_hands.clickAt(box, QPoint(4, box->height() / 2));
        m_hands.key(Qt::Key_Down);
        m_hands.key(m_chance.happens(0.5) ? Qt::Key_Return : Qt::Key_Escape);
        return called(QStringLiteral("use by keys"), *box);
    }
    if (box->count() == 0) {
        m_hands.clickAt(box, QPoint(4, box->height() / 2));
        return called(QStringLiteral("open the empty"), *box);
    }
    pick(box, m_chance.number(0, box->count() - 1), someModifiers());
    return called(QStringLiteral("pick in"), *box);
}

QString Gestures::usePopup(QWidget *popup)
{
    auto *view = popup->findChild<QAbstractItemView *>();
    if (view && m_chance.happens(0.5)) {
        m_hands.clickAt(view->viewport(), view->viewport()->rect().center(), someModifiers());
        return QStringLiteral("pick in the open list");
    }
    m_hands.key(Qt::Key_Escape);
    return QStringLiteral("leave the open list");
}

void Gestures::clickArrow(QAbstractSpinBox *box, bool up, Qt::KeyboardModifiers keys)
{
    QStyleOptionSpinBox option;
    option.initFrom(box);
    option.subControls = QStyle::SC_All;
    option.frame = box->hasFrame();
    const auto part = up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
    const QRect place = box->style()->subControlRect(QStyle::CC_SpinBox, &option, part, box);
    m_hands.clickAt(box, place.center(), keys);
}

QString Gestures::useSpinBox(QAbstractSpinBox *box)
{
    if (m_chance.happens(0.5)) {
        const auto keys = m_chance.happens(0.15) ? Qt::ShiftModifier : Qt::NoModifier;
        const bool up = m_chance.happens(0.5);
        for (int i = m_chance.number(1, 4); i > 0; --i)
            clickArrow(box, up, keys);
        return called(QStringLiteral("click the arrows of"), *box);
    }
    m_hands.clickAt(box, QPoint(6, box->height() / 2));
    const QStringList texts{QStringLiteral("250"), QStringLiteral("1000"), QStringLiteral("5"),
                            QStringLiteral("40"),  QStringLiteral("12.5"), QStringLiteral("999999"),
                            QStringLiteral("0"),   QStringLiteral("x"),    QString()};
    m_hands.typeOver(m_chance.oneOf(texts));
    switch (m_chance.number(0, 3)) {
    case 0:
        m_hands.key(Qt::Key_Tab);
        break;
    case 1:
        m_hands.key(Qt::Key_Return, Qt::ShiftModifier);
        break;
    default:
        m_hands.key(Qt::Key_Return);
        break;
    }
    return called(QStringLiteral("type into"), *box);
}

QString Gestures::textFor(const QLineEdit &field)
{
    const Addresses &places = m_program.addresses();
    const QString name = field.objectName();
    const bool isPortLister = dialogName(*field.window()) == QLatin1String("PortLister");
    if (isPortLister && name == QLatin1String("ipAddrBox"))
        return m_chance.oneOf(QStringList{places.device, places.nobody, places.deaf});
    if (name == QLatin1String("comBox"))
        return QString::number(m_chance.happens(0.5) ? kLivePort : kDeadPort);
    if (name == QLatin1String("ipAddrBox") || name == QLatin1String("IpAddress"))
        return m_chance.oneOf(QStringList{places.gateway, places.gateway, places.otherGateway});
    if (name == QLatin1String("portNo") && dialogName(*field.window()) == QLatin1String("GatewayZRT"))
        return QString::number(m_chance.happens(0.8) ? m_program.gatewayPort() : 5675);
    if (name == QLatin1String("portNo") && !isPortLister)
        return QString::number(m_chance.happens(0.8) ? 1024 + m_chance.number(0, 9) : 5675);
    return m_chance.oneOf(QStringList{QStringLiteral("12.5"), QStringLiteral("-3"), QStringLiteral("5"),
                                      QStringLiteral("100"), QStringLiteral("abc"), QString()});
}

QString Gestures::useField(QLineEdit *field)
{
    m_hands.click(field);
    if (field->isReadOnly() || m_chance.happens(0.2))
        return called(QStringLiteral("click"), *field);
    const QPointer<QLineEdit> target = field;
    const QString text = textFor(*field);
    m_hands.then([this, target, text] {
        if (target && target->hasFocus())
            m_hands.typeOver(text);
    });
    return called(QStringLiteral("type into"), *field);
}

QString Gestures::useView(QAbstractItemView *view)
{
    const QAbstractItemModel *model = view->model();
    if (!model || model->rowCount() == 0 || model->columnCount() == 0) {
        m_hands.click(view->viewport());
        return called(QStringLiteral("click the empty"), *view);
    }
    const QModelIndex item =
        model->index(m_chance.number(0, model->rowCount() - 1), m_chance.number(0, model->columnCount() - 1));
    const QPointer<QAbstractItemView> target = view;
    m_hands.then([this, target, place = QPersistentModelIndex(item), keys = someModifiers()] {
        if (!target || !place.isValid())
            return;
        target->scrollTo(place);
        const QRect shown = target->visualRect(place) & target->viewport()->rect();
        m_hands.clickAt(target->viewport(), shown.center(), keys);
    });
    if (m_chance.happens(0.3))
        m_hands.key(m_chance.happens(0.5) ? Qt::Key_Space : Qt::Key_Down);
    return called(QStringLiteral("click into"), *view);
}

QString Gestures::pressSomeKey()
{
    struct Stroke
    {
        Qt::Key key;
        Qt::KeyboardModifiers keys;
    };
    const QVector<Stroke> strokes{{Qt::Key_Tab, Qt::NoModifier},      {Qt::Key_Backtab, Qt::ShiftModifier},
                                  {Qt::Key_Space, Qt::NoModifier},    {Qt::Key_Up, Qt::NoModifier},
                                  {Qt::Key_Down, Qt::NoModifier},     {Qt::Key_PageDown, Qt::NoModifier},
                                  {Qt::Key_F1, Qt::NoModifier},       {Qt::Key_U, Qt::ControlModifier},
                                  {Qt::Key_Return, Qt::ShiftModifier}};
    const Stroke stroke = m_chance.oneOf(strokes);
    const QString text = stroke.key == Qt::Key_Space ? QStringLiteral(" ") : QString();
    m_hands.key(stroke.key, stroke.keys, text);
    return QStringLiteral("press key %1").arg(stroke.key, 0, 16);
}

} // namespace storm
