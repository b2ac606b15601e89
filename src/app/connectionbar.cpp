#include "app/connectionbar.h"

#include "app/lamps.h"
#include "base/gui/fonts.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kBarSpacing = 5;
constexpr int kControlHeight = 23;
constexpr int kLampHeight = 20;
constexpr int kLampWidth = 16;
constexpr int kLetterLampWidth = 20;
constexpr int kHelpButtonWidth = 16;
constexpr QSize kNoticeSize(300, 17);
constexpr QSize kStatusBoxSize(90, 24);

// A letter lamp is so narrow that the margin which a line edit keeps beside its text has to go.
constexpr int kLetterLampMargin = -2;

QString translated(const char *text)
{
    return QCoreApplication::translate("ConnectionBar", text);
}

template <typename W>
W *named(const char *name, const QString &accessibleName, W *widget)
{
    widget->setObjectName(QLatin1String(name));
    widget->setAccessibleName(accessibleName);
    return widget;
}

// Lamps are looked at, not worked with: no keyboard focus, no cursor, and black letters on every colour.
void makeLamp(QLineEdit *lamp)
{
    lamp->setReadOnly(true);
    lamp->setFocusPolicy(Qt::NoFocus);
    QPalette palette = lamp->palette();
    palette.setColor(QPalette::Text, Qt::black);
    lamp->setPalette(palette);
}

} // namespace

ConnectionBar::ConnectionBar(QWidget *parent)
    : topLayout(new QHBoxLayout)
    , configButton(named("configButton", translated("Config Communication"), new QPushButton(parent)))
    , ipEdit(named("ipEdit", translated("IP address of the system"), new QLineEdit(parent)))
    , comEdit(named("comEdit", translated("COM port of the system"), new QLineEdit(parent)))
    , connectionLamp(named("connectionLamp", translated("State of the connection"), new QLineEdit(parent)))
    , txLamp(named("txLamp", translated("Data sent"), new QLineEdit(parent)))
    , rxLamp(named("rxLamp", translated("Data received"), new QLineEdit(parent)))
    , updateLabel(named("updateLabel", translated("New version"), new QLabel(parent)))
    , helpButton(named("helpButton", translated("Help, hold for two seconds to reset the system"),
                       new QPushButton(parent)))
    , systemReportButton(named("systemReportButton", translated("System Report"), new QPushButton(parent)))
    , statusBox(named("statusBox", translated("State of the session"), new QLineEdit(parent)))
{
    topLayout->setObjectName(QStringLiteral("topLayout"));
    setUpConnection();
    setUpLamps();
    setUpNoticeAndButtons();
    setUpStatusBox();
    layOut();
}

void ConnectionBar::setUpConnection()
{
    configButton->setText(translated("Config Communication"));
    configButton->setFixedSize(140, kControlHeight);

    ipEdit->setReadOnly(true);
    ipEdit->setText(QStringLiteral("192.168.0.62"));
    ipEdit->setFixedSize(110, kControlHeight);

    comEdit->setReadOnly(true);
    comEdit->setPlaceholderText(QStringLiteral("COM "));
    comEdit->setToolTip(translated("Click to change COM settings"));
    comEdit->setFixedSize(55, kControlHeight);
}

void ConnectionBar::setUpLamps()
{
    makeLamp(connectionLamp);
    connectionLamp->setMaximumSize(kLampWidth, kLampHeight);
    for (QLineEdit *lamp : {rxLamp, txLamp}) {
        makeLamp(lamp);
        lamp->setMaximumSize(kLetterLampWidth, kLampHeight);
        lamp->setAlignment(Qt::AlignCenter);
        lamp->setTextMargins(kLetterLampMargin, 0, kLetterLampMargin, 0);
        setLampColour(lamp, LampColour::Dark);
    }
    rxLamp->setText(QStringLiteral("Rx"));
    txLamp->setText(QStringLiteral("Tx"));
}

void ConnectionBar::setUpNoticeAndButtons()
{
    // The notice takes the room that the rest of the bar leaves, shown or not, and never asks for more.
    QSizePolicy policy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    policy.setRetainSizeWhenHidden(true);
    updateLabel->setSizePolicy(policy);
    updateLabel->setMaximumSize(kNoticeSize);
    updateLabel->setTextFormat(Qt::PlainText); // the text comes from outside
    updateLabel->hide();

    helpButton->setText(QStringLiteral("?"));
    helpButton->setMaximumSize(kHelpButtonWidth, kLampHeight);

    systemReportButton->setText(translated("System Report"));
    systemReportButton->setFixedSize(119, kControlHeight);
}

void ConnectionBar::setUpStatusBox()
{
    makeLamp(statusBox);
    statusBox->setFixedSize(kStatusBoxSize);
    statusBox->setFont(fonts::text(statusBox->font()));
    statusBox->setAlignment(Qt::AlignCenter);
    statusBox->setToolTip(translated("Software busy indicator"));
}

void ConnectionBar::layOut()
{
    topLayout->setSpacing(kBarSpacing);
    topLayout->addSpacing(3);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{configButton, ipEdit, comEdit, connectionLamp, txLamp, rxLamp})
        topLayout->addWidget(widget, 0, Qt::AlignTop);
    topLayout->addSpacing(10);
    topLayout->addWidget(updateLabel, 0, Qt::AlignTop);
    topLayout->addSpacing(60);
    topLayout->addSpacing(119);
    topLayout->addWidget(helpButton, 0, Qt::AlignTop);
    topLayout->addSpacing(16);
    topLayout->addWidget(systemReportButton, 0, Qt::AlignTop);
    topLayout->addSpacing(2);
    topLayout->addSpacing(2);
    topLayout->addWidget(statusBox, 0, Qt::AlignTop);
    topLayout->addSpacing(10);
}
