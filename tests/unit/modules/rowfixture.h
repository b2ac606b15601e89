#pragma once

#include "modules/moduledevice_view.h"
#include "support/childbyname.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>
#include <memory>

Q_DECLARE_METATYPE(HeaderForm)

inline std::unique_ptr<ModuleDevice_View> makeRow(HeaderForm form, int firstChannel = 5)
{
    ModuleIdentification identification;
    identification.headerForm = form;
    return std::make_unique<ModuleDevice_View>(3, identification, ModuleMeasurement(), firstChannel,
                                               firstChannel + 1);
}

inline QLabel *label(const ModuleDevice_View &row, const char *name)
{
    return childByName<QLabel>(&row, name);
}

inline QString text(const ModuleDevice_View &row, const char *name)
{
    return label(row, name)->text();
}

inline QPushButton *button(const ModuleDevice_View &row, const char *name)
{
    return childByName<QPushButton>(&row, name);
}

inline QFont nameFont()
{
    QFont font(QStringLiteral("Segoe UI"));
    font.setPixelSize(12);
    font.setWeight(75);
    return font;
}

inline void checkNameFont(const QLabel *name)
{
    QCOMPARE(name->font().family(), nameFont().family());
    QCOMPARE(name->font().pixelSize(), nameFont().pixelSize());
    QCOMPARE(name->font().weight(), nameFont().weight());
}

inline const QStringList kHeaderNames{
    "Channel", "FirstInfoDevice", "SecondInfoDevice", "Shunt", "Filter", "ManualOffset", "RevPol"};

/// Names of a channel's header labels, that of the level left out.
inline QStringList headersOf(Channel channel)
{
    QStringList names;
    for (const QString &name : kHeaderNames)
        names << QStringLiteral("label_") + name + (channel == Channel::B ? QStringLiteral("_2") : QString());
    return names;
}

inline QStringList hiddenHeaders(const ModuleDevice_View &row, Channel channel)
{
    QStringList hidden;
    for (const QString &name : headersOf(channel)) {
        if (label(row, name.toLatin1().constData())->isHidden())
            hidden << name;
    }
    return hidden;
}

inline void addForms()
{
    QTest::addColumn<HeaderForm>("form");
    QTest::newRow("3 strain gauge") << HeaderForm::StrainGauge;
    QTest::newRow("4 voltage") << HeaderForm::Voltage;
    QTest::newRow("5 thermo") << HeaderForm::Thermo;
    QTest::newRow("6 universal") << HeaderForm::Universal;
}

/// Whether the text of a label can be read whole.
inline bool showsAll(const QLabel *label)
{
    const QString shown = label->text().trimmed();
    if (shown.isEmpty())
        return true;
    const int flags = static_cast<int>(label->alignment()) | (label->wordWrap() ? Qt::TextWordWrap : 0);
    const QRect needed = label->fontMetrics().boundingRect(label->contentsRect(), flags, shown);
    return label->contentsRect().contains(needed);
}
