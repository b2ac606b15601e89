#include "settings/portgrid.h"

#include "base/gui/fonts.h"

#include <QDebug>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {

const QLatin1String kPrefix("COM");
const QLatin1String kAbsent("__");

constexpr int kColumnWidth = 22; ///< pixels, as many as the fixed width of the window gives
constexpr int kColumnGap = 4;    ///< pixels, so that two numbers of three digits do not run together
constexpr int kBandWidth = 70;   ///< pixels
constexpr int kRowHeight = 25;   ///< pixels
constexpr int kFullStretch = 100;

/// Makes the font of the labels narrower if the text would be wider than `width` pixels.
void fit(const QList<QLabel *> &labels, const QString &widestText, int width)
{
    QFont font = fonts::strong();
    const int natural = QFontMetrics(font).horizontalAdvance(widestText);
    if (natural <= width)
        return;
    font.setStretch(kFullStretch * width / natural);
    for (QLabel *label : labels)
        label->setFont(font);
}

QLabel *makeLabel(const QString &text, const QString &objectName, QWidget &parent)
{
    auto *label = new QLabel(text, &parent);
    label->setObjectName(objectName);
    label->setFont(fonts::strong());
    label->setFixedHeight(kRowHeight);
    return label;
}

} // namespace

int portNumber(const QString &portName)
{
    bool isNumber = false;
    const int number = QString(portName).remove(kPrefix).toInt(&isNumber);
    return isNumber && number > 0 ? number : 0;
}

PortGrid::PortGrid(QWidget &numbers, QWidget &bands)
{
    addNumbers(numbers);
    addBands(bands);
}

void PortGrid::addNumbers(QWidget &parent)
{
    auto *layout = new QGridLayout(&parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (int i = 0; i < kPorts; ++i) {
        QLabel *label = makeLabel(kAbsent, QStringLiteral("portNumber%1").arg(i + 1), parent);
        label->setFixedWidth(kColumnWidth);
        label->setAlignment(Qt::AlignCenter);
        layout->addWidget(label, i / kColumns, i % kColumns);
        m_numbers.append(label);
    }
}

void PortGrid::addBands(QWidget &parent)
{
    // The leading blanks align the texts to the right.
    static const QStringList bands = {QStringLiteral("  01...25:"), QStringLiteral("  26...50:"),
                                      QStringLiteral("  51...75:"), QStringLiteral(" 76...100:"),
                                      QStringLiteral("101...125:"), QStringLiteral("126...150:")};
    auto *layout = new QVBoxLayout(&parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (int i = 0; i < bands.size(); ++i) {
        QLabel *label = makeLabel(bands.at(i), QStringLiteral("portBand%1").arg(i + 1), parent);
        label->setFixedWidth(kBandWidth);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        layout->addWidget(label);
        m_bands.append(label);
    }
}

void PortGrid::fitFonts()
{
    fit(m_numbers, QString::number(kPorts), kColumnWidth - kColumnGap);
    fit(m_bands, m_bands.last()->text(), kBandWidth);
}

void PortGrid::show(const QStringList &portNames)
{
    for (QLabel *label : qAsConst(m_numbers))
        label->setText(kAbsent);
    for (const QString &name : portNames) {
        const int number = portNumber(name);
        if (number > kPorts)
            qDebug() << "Ports more than 150";
        else if (number > 0)
            m_numbers.at(number - 1)->setText(QString(name).remove(kPrefix));
    }
}
