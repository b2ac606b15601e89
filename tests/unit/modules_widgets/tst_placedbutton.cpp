#include "modules/widgets/placedbutton.h"

#include <QtTest>

namespace {

const QString kRed = QStringLiteral("color:#C00000");
const QString kBlack = QStringLiteral("color:black");

} // namespace

class TstPlacedButton : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void styleOfAShownButtonIsSeen();
    void styleSetBeforeTheButtonIsShownIsSeen();
    void placeAndSizeStay();

private:
    PlacedButton *addButton(const QString &style);
    static QImage imageOf(QWidget *button) { return button->grab().toImage(); }

    std::unique_ptr<QWidget> m_window;
};

void TstPlacedButton::init()
{
    m_window = std::make_unique<QWidget>();
}

PlacedButton *TstPlacedButton::addButton(const QString &style)
{
    auto *button = new PlacedButton(m_window.get());
    button->setGeometry(10, 10, 60, 40);
    button->setText(QStringLiteral("Auto\nZero"));
    button->setStyleSheet(style);
    return button;
}

void TstPlacedButton::styleOfAShownButtonIsSeen()
{
    PlacedButton *button = addButton(kBlack);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const QImage black = imageOf(button);
    button->setStyleSheet(kRed);
    QVERIFY(imageOf(button) != black);
    button->setStyleSheet(kBlack);
    QCOMPARE(imageOf(button), black);
}

void TstPlacedButton::styleSetBeforeTheButtonIsShownIsSeen()
{
    PlacedButton *early = addButton(kRed);
    PlacedButton *late = addButton(QString());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QVERIFY(imageOf(early) != imageOf(late));
    late->setStyleSheet(kRed);
    QCOMPARE(imageOf(early), imageOf(late));
}

void TstPlacedButton::placeAndSizeStay()
{
    PlacedButton *button = addButton(kBlack);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    const QRect place = button->geometry();
    button->setStyleSheet(
        QStringLiteral("QPushButton {border-image: url(:/pictures/checkbox_blue.png);}QToolTip {}"));
    QCoreApplication::processEvents();
    QCOMPARE(button->geometry(), place);
}

QTEST_MAIN(TstPlacedButton)

#include "tst_placedbutton.moc"
