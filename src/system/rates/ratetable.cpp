#include "system/rates/ratetable.h"

#include "base/gui/firstshow.h"
#include "base/gui/fonts.h"
#include "modules/common/widgetstyle.h"
#include "system/rates/ratepairs.h"
#include "system/rates/ratepicture.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace {

constexpr int kSpacing = 2;
const QSize kRoomAroundPicture(4, 4);

QString headingStyle()
{
    return QStringLiteral("border: 1px solid black");
}

QString selectedStyle()
{
    return QStringLiteral("border: 2px solid blue");
}

QString bitRateColour()
{
    return QStringLiteral("indigo");
}

QString channelsColour()
{
    return QStringLiteral("green");
}

QString nameOf(const RateChoice &choice)
{
    return choice.channels + QLatin1Char(',') + choice.bitRate;
}

QString headingText(const QString &first, const QString &second, const QString &colour)
{
    return QStringLiteral("<p align=center><font size = 4 color=%1>%2</font><br/>"
                          "<font size=2 color=%1>%3</font></p>")
        .arg(colour, first, second);
}

/// Places of the cells, from 0.
struct Cell
{
    int row;
    int column;
};

Cell step(int key)
{
    switch (key) {
    case Qt::Key_Up:
        return {-1, 0};
    case Qt::Key_Down:
        return {1, 0};
    case Qt::Key_Left:
        return {0, -1};
    case Qt::Key_Right:
        return {0, 1};
    default:
        return {0, 0};
    }
}

} // namespace

RateTable::RateTable(QWidget *parent)
    : QWidget(parent)
{
    setFont(fonts::text());
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(kSpacing);
    addHeadings(*grid);
    addCells(*grid);
    for (int column = 0; column < grid->columnCount(); ++column)
        grid->setColumnStretch(column, 1);
    for (int row = 0; row < grid->rowCount(); ++row)
        grid->setRowStretch(row, 1);
    beforeFirstShow(*this, [this] {
        writeHeadings();
        drawPictures();
    });
}

void RateTable::addHeadings(QGridLayout &grid)
{
    for (int i = 0; i <= rates::tableChannelCounts().size() + rates::tableBitRates().size(); ++i) {
        const int row = std::max(0, i - rates::tableChannelCounts().size());
        auto *label = new QLabel(this);
        label->setTextFormat(Qt::RichText);
        label->setAlignment(Qt::AlignCenter);
        grid.addWidget(label, row, row > 0 ? 0 : i);
        m_headings.append(label);
    }
}

void RateTable::writeHeadings()
{
    QStringList texts{headingText(QStringLiteral("Bitrate"), QString(), bitRateColour())};
    for (const int channels : rates::tableChannelCounts())
        texts << headingText(QStringLiteral("Channels"), QString::number(channels), channelsColour());
    for (const int bitRate : rates::tableBitRates())
        texts << headingText(QStringLiteral("kBit/s"), QString::number(bitRate), bitRateColour());
    for (int i = 0; i < m_headings.size(); ++i) {
        m_headings[i]->setText(texts[i]);
        setStyleIfChanged(*m_headings[i], headingStyle());
    }
}

void RateTable::addCells(QGridLayout &grid)
{
    for (int row = 0; row < rates::tableBitRates().size(); ++row) {
        for (int column = 0; column < rates::tableChannelCounts().size(); ++column) {
            const RateChoice choice{QString::number(rates::tableBitRates()[row]),
                                    QString::number(rates::tableChannelCounts()[column])};
            const rates::RatePair &pair = rates::ratePairs()[row + column];
            auto *button = new QPushButton(this);
            button->setObjectName(nameOf(choice));
            button->setAccessibleName(tr("%1 kBit/s, %2 channels: %3, %4")
                                          .arg(choice.bitRate, choice.channels, pair.large, pair.small));
            button->setAutoDefault(false); // the Return key is not to send a rate
            button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
            button->installEventFilter(this);
            grid.addWidget(button, row + 1, column + 1);
            m_buttons.append(button);
        }
    }
}

void RateTable::drawPictures()
{
    QVector<rates::RatePicture> pictures;
    for (const rates::RatePair &pair : rates::ratePairs())
        pictures.append(rates::ratePicture(pair));
    const int width = rates::tableChannelCounts().size();
    for (int i = 0; i < m_buttons.size(); ++i) {
        const rates::RatePicture &picture = pictures[i / width + i % width];
        QPushButton &button = *m_buttons[i];
        button.setIcon(picture.icon);
        button.setIconSize(picture.size);
        button.setMinimumSize(picture.size + kRoomAroundPicture);
    }
}

QPushButton *RateTable::button(const RateChoice &choice) const
{
    const QString name = nameOf(choice);
    for (QPushButton *button : m_buttons) {
        if (button->objectName() == name)
            return button;
    }
    return nullptr;
}

std::optional<RateChoice> RateTable::choiceOf(const QString &objectName)
{
    const QStringList parts = objectName.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.size() < 2)
        return std::nullopt;
    return RateChoice{parts[1], parts[0]};
}

void RateTable::setAllEnabled(bool enabled)
{
    for (QPushButton *button : qAsConst(m_buttons))
        button->setEnabled(enabled);
}

void RateTable::disable(const QList<RateChoice> &cells)
{
    for (const RateChoice &choice : cells) {
        if (QPushButton *cell = button(choice))
            cell->setEnabled(false);
    }
}

void RateTable::markSelected(QPushButton *button)
{
    if (!button || !button->isEnabled())
        return;
    clearSelection();
    m_selected = button;
    setStyleIfChanged(*button, selectedStyle());
    button->setAccessibleDescription(tr("selected"));
    button->setFocus();
}

void RateTable::clearSelection()
{
    m_selected = nullptr;
    for (QPushButton *button : qAsConst(m_buttons)) {
        setStyleIfChanged(*button, QString());
        button->setAccessibleDescription(QString());
    }
}

bool RateTable::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const Cell by = step(static_cast<QKeyEvent *>(event)->key());
    if (by.row == 0 && by.column == 0)
        return QWidget::eventFilter(watched, event);
    moveFocus(m_buttons.indexOf(static_cast<QPushButton *>(watched)), by.row, by.column);
    return true;
}

void RateTable::moveFocus(int from, int rows, int columns)
{
    const int width = rates::tableChannelCounts().size();
    const int height = rates::tableBitRates().size();
    int row = from / width + rows;
    int column = from % width + columns;
    while (row >= 0 && row < height && column >= 0 && column < width) {
        QPushButton *cell = m_buttons[row * width + column];
        if (cell->isEnabled()) {
            cell->setFocus(Qt::TabFocusReason);
            return;
        }
        row += rows;
        column += columns;
    }
}
