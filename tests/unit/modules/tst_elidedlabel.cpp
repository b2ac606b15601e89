#include "modules/common/elidedlabel.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QtTest>

namespace {

void askForToolTip(QWidget &widget)
{
    QHelpEvent event(QEvent::ToolTip, QPoint(3, 3), widget.mapToGlobal(QPoint(3, 3)));
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class TstElidedLabel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { QToolTip::hideText(); }

    void textThatFitsIsShownWhole();
    void textThatDoesNotFitEndsInDots();
    void toolTipShowsTheWholeText();
    void ownToolTipStandsBehindTheWholeText();
    void markupIsNotInterpreted();
    void elidedTextIsPaintedInsideTheLabel();

private:
    std::unique_ptr<ElidedLabel> m_label;
};

void TstElidedLabel::init()
{
    m_label = std::make_unique<ElidedLabel>();
    m_label->setFixedSize(72, 17);
    m_label->show();
}

void TstElidedLabel::textThatFitsIsShownWhole()
{
    m_label->setText(QStringLiteral("SG-1"));
    QCOMPARE(m_label->shownText(), QStringLiteral("SG-1"));
    QToolTip::hideText();
    askForToolTip(*m_label);
    QVERIFY(QToolTip::text().isEmpty());
}

void TstElidedLabel::textThatDoesNotFitEndsInDots()
{
    const QString serial = QStringLiteral("SG-2024-00012345");
    m_label->setText(serial);
    QVERIFY(m_label->shownText().endsWith(QChar(0x2026)));
    QVERIFY(m_label->fontMetrics().horizontalAdvance(m_label->shownText()) <= 72);
    QCOMPARE(m_label->text(), serial);
}

void TstElidedLabel::toolTipShowsTheWholeText()
{
    m_label->setText(QStringLiteral("SG-2024-00012345"));
    askForToolTip(*m_label);
    QCOMPARE(QToolTip::text(), QStringLiteral("SG-2024-00012345"));
}

void TstElidedLabel::ownToolTipStandsBehindTheWholeText()
{
    m_label->setToolTip(QStringLiteral("Firmware"));
    m_label->setText(QStringLiteral("1.2.3.4-beta-2026"));
    askForToolTip(*m_label);
    QCOMPARE(QToolTip::text(), QStringLiteral("1.2.3.4-beta-2026<br/>Firmware"));
}

void TstElidedLabel::markupIsNotInterpreted()
{
    m_label->setText(QStringLiteral("<b>SG-2024</b>-0001"));
    askForToolTip(*m_label);
    QCOMPARE(QToolTip::text(), QStringLiteral("&lt;b&gt;SG-2024&lt;/b&gt;-0001"));
}

void TstElidedLabel::elidedTextIsPaintedInsideTheLabel()
{
    m_label->setText(QString(60, QLatin1Char('M')));
    const QImage elided = m_label->grab().toImage();
    m_label->setText(m_label->shownText());
    QCOMPARE(m_label->grab().toImage(), elided);
}

QTEST_MAIN(TstElidedLabel)

#include "tst_elidedlabel.moc"
