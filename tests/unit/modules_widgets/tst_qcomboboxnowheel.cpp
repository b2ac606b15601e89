#include "modules/widgets/fixedplaces.h"
#include "modules/widgets/qcomboboxnowheel.h"

#include "wheelinarea.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QImage>
#include <QSignalSpy>
#include <QStringListModel>
#include <QToolTip>
#include <QWindow>
#include <QtTest>

class TstQComboBoxNoWheel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void focusComesByTabAndClickOnly();
    void showsAtMostTwentyItems();
    void listIsMadeWhenItIsOpenedFirst();
    void styleMakesNoListInAStrip();
    void listThatIsMadeLaterHasTheStyle();
    void styleReachesAListThatIsThere();
    void styleElsewhereCountsForTheSize();
    void wheelWithoutFocusScrollsTheList();
    void wheelWithFocusStepsTheBox();
    void wheelDoesNotGiveTheFocus();

    void shiftPickIsAnnouncedBeforeItComes();
    void shiftPickWorksByTheWindowSystem();
    void shiftPickOfTheCurrentItemIsAPick();
    void listDoesNotSeeTheShiftPress();
    void plainPickIsNotAnnounced();
    void otherModifiersAreNotAnnounced_data();
    void otherModifiersAreNotAnnounced();
    void eachPickIsAnnouncedOnce();
    void releaseElsewherePicksTheItemThere();
    void pressBesideTheItemsIsAnnounced();
    void pickSoonAfterTheOpeningCounts();
    void secondPressOfAQuickPairIsAnnounced();
    void quickPairByTheWindowSystemIsAnnounced();
    void pickByKeysIsNotAnnounced();
    void textThatFitsIsShownAsItIs();
    void textThatDoesNotFitEndsInDots();
    void toolTipShowsTheWholeText();
    void openListShowsItsEntriesWhole();
    void modelMayComeAfterTheListWasOpened();
    void emptyBoxCanBeOpened();

private:
    QWidget *viewport() const { return m_box->view()->viewport(); }
    QPoint placeOf(int row) const;
    void open();
    void press(int row, Qt::KeyboardModifiers modifiers);
    void release(int row, Qt::KeyboardModifiers modifiers);
    std::unique_ptr<QWidget> strip();
    static QColor colourOf(const QWidget &widget);

    std::unique_ptr<QComboBoxNoWheel> m_box;
    QStringList m_events; ///< signals of the box, in their order
};

void TstQComboBoxNoWheel::init()
{
    m_box = std::make_unique<QComboBoxNoWheel>();
    m_box->addItems({"a", "b", "c", "d"});
    m_events.clear();
    connect(m_box.get(), &QComboBoxNoWheel::Signal_ShiftClick, this, [this] { m_events.append("shift"); });
    connect(m_box.get(), qOverload<int>(&QComboBox::activated), this,
            [this](int index) { m_events.append(QString::number(index)); });
}

void TstQComboBoxNoWheel::cleanup()
{
    m_box.reset();
}

QPoint TstQComboBoxNoWheel::placeOf(int row) const
{
    // The items are wider than the list may be.
    return {viewport()->width() / 2, m_box->view()->visualRect(m_box->model()->index(row, 0)).center().y()};
}

void TstQComboBoxNoWheel::open()
{
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
    m_box->setFocus();
    QTest::keyClick(m_box.get(), Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(m_box->view()->isVisible());
}

void TstQComboBoxNoWheel::press(int row, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(viewport(), Qt::LeftButton, modifiers, placeOf(row));
}

void TstQComboBoxNoWheel::release(int row, Qt::KeyboardModifiers modifiers)
{
    QTest::mouseRelease(viewport(), Qt::LeftButton, modifiers, placeOf(row));
}

void TstQComboBoxNoWheel::focusComesByTabAndClickOnly()
{
    QCOMPARE(m_box->focusPolicy(), Qt::StrongFocus);
}

void TstQComboBoxNoWheel::showsAtMostTwentyItems()
{
    QCOMPARE(m_box->maxVisibleItems(), 20);
}

void TstQComboBoxNoWheel::listIsMadeWhenItIsOpenedFirst()
{
    QVERIFY(m_box->findChildren<QAbstractItemView *>().isEmpty());
    open();
    QCOMPARE(m_box->findChildren<QAbstractItemView *>().size(), 1);
}

/// The box as it stands in a channel strip.
std::unique_ptr<QWidget> TstQComboBoxNoWheel::strip()
{
    auto strip = std::make_unique<QWidget>();
    strip->setLayout(new FixedPlaces);
    m_box.release()->setParent(strip.get());
    strip->show();
    return strip;
}

QColor TstQComboBoxNoWheel::colourOf(const QWidget &widget)
{
    return widget.palette().color(QPalette::Text);
}

void TstQComboBoxNoWheel::styleMakesNoListInAStrip()
{
    const auto parent = strip();
    auto *box = parent->findChild<QComboBoxNoWheel *>();
    box->setStyleSheet("color:#C00000");
    box->setStyleSheet("color:black");
    box->setStyleSheet("color:#C00000");
    QVERIFY(box->findChildren<QAbstractItemView *>().isEmpty());
    QCOMPARE(colourOf(*box), QColor(0xC0, 0, 0));
}

void TstQComboBoxNoWheel::listThatIsMadeLaterHasTheStyle()
{
    const auto parent = strip();
    auto *box = parent->findChild<QComboBoxNoWheel *>();
    box->setStyleSheet("color:#C00000");
    box->showPopup();
    QCOMPARE(colourOf(*box->view()), QColor(0xC0, 0, 0));
    QCOMPARE(box->view()->font(), box->font());
}

void TstQComboBoxNoWheel::styleReachesAListThatIsThere()
{
    const auto parent = strip();
    auto *box = parent->findChild<QComboBoxNoWheel *>();
    box->setStyleSheet("color:#C00000");
    box->showPopup();
    box->hidePopup();
    box->setStyleSheet("color:blue");
    QCOMPARE(colourOf(*box->view()), QColor(Qt::blue));
}

void TstQComboBoxNoWheel::styleElsewhereCountsForTheSize()
{
    m_box->show();
    const int width = m_box->sizeHint().width();
    m_box->setStyleSheet("padding-left: 40px; padding-right: 40px");
    QVERIFY(m_box->sizeHint().width() > width + 40);
}

void TstQComboBoxNoWheel::wheelWithoutFocusScrollsTheList()
{
    auto *box = m_box.release();
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    list.turn();
    QCOMPARE(box->currentIndex(), 0);
    QVERIFY(list.scrolled() > 0);
    QCOMPARE(m_events, QStringList());
}

void TstQComboBoxNoWheel::wheelWithFocusStepsTheBox()
{
    auto *box = m_box.release();
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    box->setFocus();
    QVERIFY(box->hasFocus());
    list.turn();
    QCOMPARE(box->currentIndex(), 1);
    QCOMPARE(list.scrolled(), 0);
    QCOMPARE(m_events, QStringList{"1"});
}

void TstQComboBoxNoWheel::wheelDoesNotGiveTheFocus()
{
    auto *box = m_box.release();
    WheelInArea list(box);
    QVERIFY(QTest::qWaitForWindowActive(&list.area()));
    list.area().setFocus();
    list.turn();
    QVERIFY(!box->hasFocus());
}

void TstQComboBoxNoWheel::shiftPickIsAnnouncedBeforeItComes()
{
    open();
    press(2, Qt::ShiftModifier);
    QCOMPARE(m_events, QStringList{"shift"});
    QVERIFY(m_box->view()->isVisible());
    release(2, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"shift", "2"}));
    QCOMPARE(m_box->currentIndex(), 2);
    QVERIFY(!m_box->view()->isVisible());
}

void TstQComboBoxNoWheel::shiftPickWorksByTheWindowSystem()
{
    open();
    QWidget *popup = m_box->view()->window();
    QVERIFY(QTest::qWaitForWindowExposed(popup));
    const QPoint place = viewport()->mapTo(popup, placeOf(3));
    QTest::mousePress(popup->windowHandle(), Qt::LeftButton, Qt::ShiftModifier, place);
    QTest::mouseRelease(popup->windowHandle(), Qt::LeftButton, Qt::ShiftModifier, place);
    QTRY_COMPARE(m_events, (QStringList{"shift", "3"}));
}

void TstQComboBoxNoWheel::shiftPickOfTheCurrentItemIsAPick()
{
    open();
    press(0, Qt::ShiftModifier);
    release(0, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"shift", "0"}));
}

void TstQComboBoxNoWheel::listDoesNotSeeTheShiftPress()
{
    open();
    const QSignalSpy pressed(m_box->view(), &QAbstractItemView::pressed);
    press(1, Qt::ShiftModifier);
    QCOMPARE(pressed.count(), 0);
    press(1, Qt::NoModifier);
    QCOMPARE(pressed.count(), 1);
}

void TstQComboBoxNoWheel::plainPickIsNotAnnounced()
{
    open();
    press(2, Qt::NoModifier);
    release(2, Qt::NoModifier);
    QCOMPARE(m_events, QStringList{"2"});
}

void TstQComboBoxNoWheel::otherModifiersAreNotAnnounced_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
    QTest::newRow("alt") << Qt::KeyboardModifiers(Qt::AltModifier);
    QTest::newRow("meta") << Qt::KeyboardModifiers(Qt::MetaModifier);
    QTest::newRow("shift and ctrl") << (Qt::ShiftModifier | Qt::ControlModifier);
    QTest::newRow("shift and alt") << (Qt::ShiftModifier | Qt::AltModifier);
}

void TstQComboBoxNoWheel::otherModifiersAreNotAnnounced()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    open();
    press(2, modifiers);
    release(2, modifiers);
    QVERIFY(!m_events.contains("shift"));
}

void TstQComboBoxNoWheel::eachPickIsAnnouncedOnce()
{
    for (int row = 0; row < 4; ++row) {
        open(); // again and again, the filter of the list stays one
        press(row, Qt::ShiftModifier);
        release(row, Qt::ShiftModifier);
    }
    QCOMPARE(m_events, (QStringList{"shift", "0", "shift", "1", "shift", "2", "shift", "3"}));
}

void TstQComboBoxNoWheel::releaseElsewherePicksTheItemThere()
{
    open();
    press(2, Qt::ShiftModifier);
    QMouseEvent move(QEvent::MouseMove, placeOf(1), viewport()->mapToGlobal(placeOf(1)), Qt::NoButton,
                     Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(viewport(), &move);
    release(1, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"shift", "1"}));
}

void TstQComboBoxNoWheel::pressBesideTheItemsIsAnnounced()
{
    open();
    const QPoint below(placeOf(3).x(), placeOf(3).y() + 500);
    QVERIFY(!m_box->view()->indexAt(below).isValid());
    QTest::mousePress(viewport(), Qt::LeftButton, Qt::ShiftModifier, below);
    QCOMPARE(m_events, QStringList{"shift"});
    QCOMPARE(m_box->view()->currentIndex().row(), 0);
}

void TstQComboBoxNoWheel::pickSoonAfterTheOpeningCounts()
{
    // Within the time of a double click the list mistrusts a release, unless it saw the press.
    const int usual = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(60000);
    open();
    press(2, Qt::ShiftModifier);
    release(2, Qt::ShiftModifier);
    QApplication::setDoubleClickInterval(usual);
    QCOMPARE(m_events, (QStringList{"shift", "2"}));
}

void TstQComboBoxNoWheel::secondPressOfAQuickPairIsAnnounced()
{
    open();
    QMouseEvent press(QEvent::MouseButtonDblClick, placeOf(2), viewport()->mapToGlobal(placeOf(2)),
                      Qt::LeftButton, Qt::LeftButton, Qt::ShiftModifier);
    QApplication::sendEvent(viewport(), &press);
    QCOMPARE(m_events, QStringList{"shift"});
    release(2, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"shift", "2"}));
}

void TstQComboBoxNoWheel::quickPairByTheWindowSystemIsAnnounced()
{
    m_box->setCurrentIndex(1);
    m_box->show();
    QVERIFY(QTest::qWaitForWindowActive(m_box.get()));
    const QPoint place = m_box->rect().center();
    int when = QTest::lastMouseTimestamp + 10000; // ms; no pair with a click of another test
    const auto button = [&when](QWindow *window, const QPoint &at, bool down, Qt::KeyboardModifiers keys) {
        qt_handleMouseEvent(window, window->mapFromGlobal(at), at, down ? Qt::LeftButton : Qt::NoButton,
                            Qt::LeftButton, down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease,
                            keys, when += 50);
        QCoreApplication::processEvents();
    };
    const QPoint global = m_box->mapToGlobal(place);
    button(m_box->windowHandle(), global, true, Qt::NoModifier);
    QTRY_VERIFY(m_box->view()->isVisible());
    button(m_box->windowHandle(), global, false, Qt::NoModifier);
    QVERIFY(m_box->view()->isVisible());
    // The list stands over the box or below it: the second press is at the same place or at the first item.
    QWindow *popup = m_box->view()->window()->windowHandle();
    const QRect list = QRect(viewport()->mapToGlobal(QPoint()), viewport()->size());
    const QPoint second = list.contains(global) ? global : viewport()->mapToGlobal(placeOf(0));
    button(popup, second, true, Qt::ShiftModifier);
    QTest::lastMouseTimestamp = when + 10000;
    QCOMPARE(m_events, QStringList{"shift"});
}

void TstQComboBoxNoWheel::pickByKeysIsNotAnnounced()
{
    open();
    QTest::keyClick(m_box->view(), Qt::Key_Down);
    QTest::keyClick(m_box->view(), Qt::Key_Return);
    QCOMPARE(m_events, QStringList{"1"});
}

void TstQComboBoxNoWheel::modelMayComeAfterTheListWasOpened()
{
    open();
    m_box->hidePopup();
    QStringListModel model({"x", "y"});
    m_box->setModel(&model);
    m_events.clear();
    open();
    press(1, Qt::ShiftModifier);
    release(1, Qt::ShiftModifier);
    QCOMPARE(m_events, (QStringList{"shift", "1"}));
    QCOMPARE(m_box->currentText(), QStringLiteral("y"));
    m_box.reset(); // before its model
}

void TstQComboBoxNoWheel::textThatFitsIsShownAsItIs()
{
    m_box->resize(200, 24);
    QCOMPARE(m_box->shownText(), QStringLiteral("a"));
}

void TstQComboBoxNoWheel::textThatDoesNotFitEndsInDots()
{
    m_box->clear();
    m_box->addItem(QString::fromUtf8("±1000000000000000000000000000"));
    m_box->resize(140, 24);
    m_box->show();
    const QString shown = m_box->shownText();
    QVERIFY(shown.startsWith(QString::fromUtf8("±100")));
    QVERIFY(shown.endsWith(QString::fromUtf8("…")));
    QCOMPARE(m_box->currentText(), QString::fromUtf8("±1000000000000000000000000000"));

    // That is what is painted: an entry with just the shown text looks the same.
    const QImage cut = m_box->grab().toImage();
    m_box->setItemText(0, shown);
    QCOMPARE(m_box->grab().toImage(), cut);
    m_box->setItemText(0, QString::fromUtf8("±100"));
    QVERIFY(m_box->grab().toImage() != cut);
}

void TstQComboBoxNoWheel::toolTipShowsTheWholeText()
{
    const QString whole(60, QLatin1Char('<'));
    m_box->clear();
    m_box->addItem(whole);
    m_box->resize(90, 24);
    m_box->show();
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), m_box->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(m_box.get(), &help);
    QCOMPARE(QToolTip::text(), whole.toHtmlEscaped());
    QToolTip::hideText();
    QTRY_VERIFY(!QToolTip::isVisible());

    m_box->setItemText(0, QStringLiteral("a"));
    QCoreApplication::sendEvent(m_box.get(), &help);
    QVERIFY(!QToolTip::isVisible());
}

void TstQComboBoxNoWheel::openListShowsItsEntriesWhole()
{
    m_box->clear();
    m_box->addItem(QString(60, QLatin1Char('M')));
    m_box->resize(60, 24);
    m_box->show();
    m_box->showPopup();
    QVERIFY(m_box->view()->viewport()->width() >= m_box->view()->sizeHintForColumn(0));
}

void TstQComboBoxNoWheel::emptyBoxCanBeOpened()
{
    m_box->clear();
    m_box->show();
    m_box->showPopup();
    QVERIFY(!m_box->view()->isVisible());
    QCOMPARE(m_events, QStringList());
}

QTEST_MAIN(TstQComboBoxNoWheel)
#include "tst_qcomboboxnowheel.moc"
