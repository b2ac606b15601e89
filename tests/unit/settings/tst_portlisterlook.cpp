#include "settings/portlister.h"

#include "base/gui/fonts.h"
#include "portfolder.h"
#include "settings/comconfigbox.h"
#include "support/messagecatcher.h"
#include "support/virtualtime.h"

#include <QCheckBox>
#include <QFontInfo>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QtTest>

/// How the dialogs look with the fonts that stand in for the one they ask for.
class TstPortListerLook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup();
    void labelsHaveTheAgreedFont();
    void headingIsDarkRed();
    void everythingFits_data();
    void everythingFits();
    void gridIsFittedWithTheFirstShow();
    void gridIsAligned();
    void formIsAligned();
    void boxFits_data();
    void boxFits();

private:
    /// Lets the family stand in for the one that is asked for; false if it is not installed.
    [[nodiscard]] bool useFont(const QString &family);
    void verifyFits(const QWidget &window);

    PortFolder m_ports;
    VirtualTime m_time;
};

namespace {

const char kInstall[] = "scripts/install brings this font";

/// Width that the text of a control needs, its frame and indicator included.
int neededWidth(const QWidget &widget)
{
    return widget.sizeHint().width();
}

} // namespace

void TstPortListerLook::initTestCase()
{
    for (int n = 1; n <= 150; ++n)
        QVERIFY(m_ports.plug(QStringLiteral("COM%1").arg(n)));
}

void TstPortListerLook::cleanup()
{
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
}

bool TstPortListerLook::useFont(const QString &family)
{
    QFont::removeSubstitutions(QStringLiteral("Segoe UI"));
    QFont::insertSubstitution(QStringLiteral("Segoe UI"), family);
    QApplication::setFont(fonts::text(QApplication::font()));
    return QFontInfo(fonts::text()).family() == family;
}

void TstPortListerLook::verifyFits(const QWidget &window)
{
    const auto widgets = window.findChildren<QWidget *>();
    int seen = 0;
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        const QByteArray name = widget->objectName().toUtf8();
        QVERIFY2(widget->parentWidget()->rect().contains(widget->geometry()), name);
        if (!qobject_cast<const QLabel *>(widget) && !qobject_cast<const QAbstractButton *>(widget))
            continue;
        ++seen;
        QVERIFY2(widget->width() >= neededWidth(*widget), name);
        QVERIFY2(widget->height() >= widget->minimumSizeHint().height(), name);
    }
    QVERIFY(seen > 15);
}

void TstPortListerLook::labelsHaveTheAgreedFont()
{
    PortLister lister(m_time, m_ports.directory());
    const auto labels = lister.findChildren<QLabel *>();
    int seen = 0;
    for (const QLabel *label : labels) {
        if (label->window() != &lister)
            continue;
        ++seen;
        QCOMPARE(label->font().family(), QStringLiteral("Segoe UI"));
        QCOMPARE(label->font().pixelSize(), 12);
        QCOMPARE(label->font().weight(), 75);
    }
    QCOMPARE(seen, 150 + 6 + 7);
}

void TstPortListerLook::headingIsDarkRed()
{
    PortLister lister(m_time, m_ports.directory());
    const auto *heading = lister.findChild<QLabel *>(QStringLiteral("secondLabel"));
    QCOMPARE(heading->palette().color(heading->foregroundRole()), QColor(140, 1, 3));
    const auto *other = lister.findChild<QLabel *>(QStringLiteral("labelCOMPort"));
    QVERIFY(other->palette().color(other->foregroundRole()) != QColor(140, 1, 3));
}

void TstPortListerLook::everythingFits_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<int>("height");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        for (const int height : {450, 480})
            QTest::newRow(qPrintable(QStringLiteral("%1, %2 high").arg(QLatin1String(family)).arg(height)))
                << QString::fromLatin1(family) << height;
    }
}

void TstPortListerLook::everythingFits()
{
    QFETCH(QString, family);
    QFETCH(int, height);
    QVERIFY2(useFont(family), kInstall);
    PortLister lister(m_time, m_ports.directory());
    lister.Slot_AvailblePorts();
    lister.resize(650, height);
    lister.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lister));
    QCOMPARE(lister.size(), QSize(650, height));
    verifyFits(lister);
    // The widest number keeps a gap to its neighbour.
    const auto *widest = lister.findChild<QLabel *>(QStringLiteral("portNumber150"));
    QCOMPARE(widest->text(), QStringLiteral("150"));
    QVERIFY(widest->width() - QFontMetrics(widest->font()).horizontalAdvance(widest->text()) >= 2);
}

void TstPortListerLook::gridIsFittedWithTheFirstShow()
{
    QVERIFY2(useFont(QStringLiteral("DejaVu Sans")), kInstall); // too wide for the columns
    PortLister lister(m_time, m_ports.directory());
    lister.Slot_AvailblePorts();
    const auto *number = lister.findChild<QLabel *>(QStringLiteral("portNumber150"));
    const int natural = fonts::strong().stretch();
    const int wide = QFontMetrics(number->font()).horizontalAdvance(number->text());
    QCOMPARE(number->font().stretch(), natural); // looking up the narrow fonts takes long
    lister.show();
    QCOMPARE(number->text(), QStringLiteral("150")); // what was surveyed before
    QVERIFY(number->font().stretch() > 0 && number->font().stretch() < 100);
    QVERIFY(QFontMetrics(number->font()).horizontalAdvance(number->text()) < wide);
}

void TstPortListerLook::gridIsAligned()
{
    QVERIFY2(useFont(QStringLiteral("Open Sans")), kInstall);
    PortLister lister(m_time, m_ports.directory());
    lister.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lister));
    const auto label = [&lister](const QString &name, int n) {
        return lister.findChild<QLabel *>(name + QString::number(n));
    };
    for (int row = 0; row < 6; ++row) {
        const QLabel *band = label(QStringLiteral("portBand"), row + 1);
        const QLabel *first = label(QStringLiteral("portNumber"), 25 * row + 1);
        QCOMPARE(band->mapTo(&lister, QPoint()).y(), first->mapTo(&lister, QPoint()).y());
        QCOMPARE(band->height(), first->height());
        QVERIFY(band->mapTo(&lister, band->rect().topRight()).x() < first->mapTo(&lister, QPoint()).x());
        for (int column = 0; column < 25; ++column) {
            const QLabel *number = label(QStringLiteral("portNumber"), 25 * row + column + 1);
            QCOMPARE(number->x(), label(QStringLiteral("portNumber"), column + 1)->x());
            QCOMPARE(number->y(), first->y());
        }
    }
}

void TstPortListerLook::formIsAligned()
{
    QVERIFY2(useFont(QStringLiteral("Open Sans")), kInstall);
    PortLister lister(m_time, m_ports.directory());
    lister.show();
    QVERIFY(QTest::qWaitForWindowExposed(&lister));
    const auto place = [&lister](const char *name) {
        const auto *widget = lister.findChild<QWidget *>(QString::fromLatin1(name));
        return QRect(widget->mapTo(&lister, QPoint()), widget->size());
    };
    QCOMPARE(place("comBox").left(), place("portConfigBox").left());
    QCOMPARE(place("comBox").right(), place("portConfigBox").right());
    QCOMPARE(place("ipAddrBox").left(), place("portBox").left());
    QCOMPARE(place("ipAddrBox").right(), place("portBox").right());
    QCOMPARE(place("comBox").top(), place("ipAddrBox").top());
    QCOMPARE(place("portConfigBox").top(), place("portBox").top());
    QCOMPARE(place("checkBoxComprt").top(), place("checkBoxGateway").top());
    QCOMPARE(place("openBtn").size(), place("cancelBtn").size());
    QCOMPARE(place("cancelBtn").right(), place("ipAddrBox").right());
}

void TstPortListerLook::boxFits_data()
{
    QTest::addColumn<QString>("family");
    QTest::newRow("Open Sans") << "Open Sans";
    QTest::newRow("DejaVu Sans") << "DejaVu Sans";
}

void TstPortListerLook::boxFits()
{
    QFETCH(QString, family);
    QVERIFY2(useFont(family), kInstall);
    ComConfigBox box;
    box.show();
    QVERIFY(QTest::qWaitForWindowExposed(&box));
    verifyFits(box);
}

QTEST_MAIN(TstPortListerLook)
#include "tst_portlisterlook.moc"
