#include "base/gui/fonts.h"
#include "modules/common/elidedlabel.h"
#include "support/childbyname.h"
#include "support/dialoglook.h"
#include "support/virtualtime.h"
#include "system/modulesyssettings_view.h"
#include "system/vx_samplingrates.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QToolTip>
#include <QtTest>

namespace {

constexpr int kRoom = 1150;

void addFontsAndStyles()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("style");
    for (const char *family : {"Open Sans", "DejaVu Sans"}) {
        for (const char *style : {"Fusion", "Windows"})
            QTest::addRow("%s, %s", family, style) << family << style;
    }
}

/// The panel as it stands in the window, with the longest ordinary values.
struct ShownPanel
{
    ShownPanel()
    {
        panel.setModulesNumber(128);
        panel.setChannelsNumber(256);
        panel.setPoweringMode("inductive and cable");
        panel.setDataTransmission("inductive and cable");
        panel.setBitRate("10000 (256 ch)");
        panel.setSamplingRate("61.0351563");
        panel.resize(kRoom, panel.sizeHint().height());
        panel.show();
        QApplication::setActiveWindow(&panel);
    }

    template <typename T>
    T *child(const char *name) const
    {
        return childByName<T>(&panel, name);
    }

    /// The controls and labels that are on the panel itself, not in its dialogs.
    QList<QWidget *> widgets() const
    {
        return child<QWidget>("groupBox")->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    }

    VirtualTime time;
    ModuleSysSettings_View panel{time};
};

} // namespace

/// Where the parts of the panel and of the table of data rates stand, in every font and style.
class TstSystemPanelLayout : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void panelIsLow_data() { addFontsAndStyles(); }
    void panelIsLow();
    void textsAreWhole_data() { addFontsAndStyles(); }
    void textsAreWhole();
    void partsStandApartOnThePanel_data() { addFontsAndStyles(); }
    void partsStandApartOnThePanel();
    void longDeviceTextsAreCutWithDots_data();
    void longDeviceTextsAreCutWithDots();
    void longRatesShowTheirBeginning();

    void tableStandsWholeInItsDialog_data() { addFontsAndStyles(); }
    void tableStandsWholeInItsDialog();
};

void TstSystemPanelLayout::cleanup()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    dialoglook::resetFont();
    fonts::installSubstitutions();
}

void TstSystemPanelLayout::panelIsLow()
{
    QFETCH(QString, family);
    QFETCH(QString, style);
    QVERIFY2(dialoglook::useFont(family), "The font is not installed.");
    QApplication::setStyle(style);
    const ShownPanel p;
    QVERIFY2(p.panel.minimumSizeHint().width() <= kRoom,
             qPrintable(QString::number(p.panel.minimumSizeHint().width())));
    QVERIFY2(p.panel.height() >= 50 && p.panel.height() <= 80, qPrintable(QString::number(p.panel.height())));
    QCOMPARE(p.panel.sizePolicy().verticalPolicy(), QSizePolicy::Fixed); // the rows get the room
}

void TstSystemPanelLayout::textsAreWhole()
{
    QFETCH(QString, family);
    QFETCH(QString, style);
    QVERIFY2(dialoglook::useFont(family), "The font is not installed.");
    QApplication::setStyle(style);
    const ShownPanel p;
    int seen = 0;
    const auto widgets = p.widgets();
    for (const QWidget *widget : widgets) {
        const char *name = qPrintable(widget->objectName());
        if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            const QSize text = label->fontMetrics().size(0, label->text());
            QVERIFY2(text.width() <= label->contentsRect().width(), name);
            QVERIFY2(text.height() <= label->contentsRect().height(), name);
            ++seen;
        } else if (const auto *button = qobject_cast<const QPushButton *>(widget)) {
            QVERIFY2(button->fontMetrics().horizontalAdvance(button->text()) <= button->width() - 8, name);
            QVERIFY2(button->fontMetrics().height() <= button->height() - 4, name);
            ++seen;
        } else if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
            QVERIFY2(edit->fontMetrics().horizontalAdvance(edit->text()) <= edit->width() - 8, name);
            QVERIFY2(edit->fontMetrics().height() <= edit->height() - 2, name);
            ++seen;
        }
    }
    QCOMPARE(seen, 20); // 14 labels, 4 buttons, 2 line edits
}

void TstSystemPanelLayout::partsStandApartOnThePanel()
{
    QFETCH(QString, family);
    QFETCH(QString, style);
    QVERIFY2(dialoglook::useFont(family), "The font is not installed.");
    QApplication::setStyle(style);
    const ShownPanel p;
    const QRect place = p.child<QWidget>("groupBox")->rect();
    QVERIFY(p.panel.rect().contains(p.child<QWidget>("groupBox")->geometry()));
    const auto widgets = p.widgets();
    for (const QWidget *widget : widgets) {
        QVERIFY2(place.contains(widget->geometry()), qPrintable(widget->objectName()));
        for (const QWidget *other : widgets) {
            const bool apart = widget == other || !widget->geometry().intersects(other->geometry());
            QVERIFY2(apart, qPrintable(widget->objectName() + QLatin1Char('/') + other->objectName()));
        }
    }
    const auto centre = [&p](const char *name) { return p.child<QWidget>(name)->geometry().center().y(); };
    for (const char *name : {"label_Channels", "label_DataTransmission", "label_BitRate", "lineEdit_BitRate"})
        QVERIFY2(qAbs(centre(name) - centre("label_DataTransmissionText")) <= 1, name);
    for (const char *name : {"label_Modules", "label_PoweringMode", "label_SamplingRate",
                             "lineEdit_SamplingRate", "label_SamplesUnit"})
        QVERIFY2(qAbs(centre(name) - centre("label_PoweringModeText")) <= 1, name);
}

void TstSystemPanelLayout::longDeviceTextsAreCutWithDots_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("powering mode") << "label_PoweringMode";
    QTest::newRow("data transmission") << "label_DataTransmission";
}

void TstSystemPanelLayout::longDeviceTextsAreCutWithDots()
{
    QFETCH(QString, name);
    ShownPanel p;
    const QSize before = p.panel.minimumSizeHint();
    const QString text = QStringLiteral("inductive <b>and</b> cable, ").repeated(6);
    p.panel.setPoweringMode(text);
    p.panel.setDataTransmission(text);
    auto *label = p.child<ElidedLabel>(qPrintable(name));
    QCOMPARE(label->text(), text);
    QVERIFY(label->shownText().startsWith(QStringLiteral("inductive <b>")));
    QVERIFY(label->shownText().endsWith(QChar(0x2026)));
    QCOMPARE(p.panel.minimumSizeHint(), before);
    QHelpEvent help(QEvent::ToolTip, QPoint(3, 3), label->mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(label, &help);
    QCOMPARE(QToolTip::text(), text.toHtmlEscaped());
    QToolTip::hideText();
}

void TstSystemPanelLayout::longRatesShowTheirBeginning()
{
    ShownPanel p;
    p.panel.setBitRate(QStringLiteral("10000 kBit/s with a very long remark (256 ch)"));
    p.panel.setSamplingRate(QStringLiteral("250000.0000000000 in every second of the day"));
    QCOMPARE(p.child<QLineEdit>("lineEdit_BitRate")->cursorPosition(), 0);
    QCOMPARE(p.child<QLineEdit>("lineEdit_SamplingRate")->cursorPosition(), 0);
}

void TstSystemPanelLayout::tableStandsWholeInItsDialog()
{
    QFETCH(QString, family);
    QFETCH(QString, style);
    QVERIFY2(dialoglook::useFont(family), "The font is not installed.");
    QApplication::setStyle(style);
    VX_SamplingRates dialog;
    dialog.Slot_EnableAllBtns();
    dialog.show();
    QCOMPARE(dialog.size(), QSize(664, 350));
    auto *table = childByName<QWidget>(&dialog, "rateTable");
    QVERIFY(dialog.rect().contains(table->geometry()));
    const auto cells = table->findChildren<QPushButton *>();
    QCOMPARE(cells.size(), 48);
    for (const QPushButton *cell : cells) {
        const QString name = cell->objectName();
        QVERIFY2(table->rect().contains(cell->geometry()), qPrintable(name));
        QVERIFY2(cell->width() >= cell->iconSize().width() + 4,
                 qPrintable(name)); // the mark takes 2 on a side
        QVERIFY2(cell->height() >= cell->iconSize().height() + 4, qPrintable(name));
        for (const QPushButton *other : cells)
            QVERIFY2(cell == other || !cell->geometry().intersects(other->geometry()), qPrintable(name));
    }
    const auto headings = table->findChildren<QLabel *>();
    QCOMPARE(headings.size(), 15);
    for (const QLabel *heading : headings) {
        QTextDocument text;
        text.setDefaultFont(heading->font());
        text.setDocumentMargin(0);
        text.setDefaultStyleSheet(QStringLiteral("p { margin: 0px }"));
        text.setHtml(heading->text());
        QVERIFY2(text.idealWidth() <= heading->width() - 2, qPrintable(heading->text())); // its border
        QVERIFY2(text.size().height() <= heading->height() - 2, qPrintable(heading->text()));
        QVERIFY2(table->rect().contains(heading->geometry()), qPrintable(heading->text()));
    }
}

QTEST_MAIN(TstSystemPanelLayout)
#include "tst_systempanellayout.moc"
