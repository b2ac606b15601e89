#pragma once

#include "support/childbyname.h"
#include "system/rates/ratetable.h"
#include "system/vx_samplingrates.h"

#include <QPushButton>
#include <QRegularExpression>
#include <QStringList>
#include <QtTest>

/// The dialog of the data rates on screen, with what it sends noted in order: "device 2500 16".
class RateDialog
{
public:
    enum class Cells { AllDead, Enabled };

    explicit RateDialog(Cells cells = Cells::Enabled)
    {
        const auto note = [this](const char *to) {
            return [this, to](const QString &bitRate, const QString &channels) {
                m_sent.append(QStringList{QString::fromLatin1(to), bitRate, channels}.join(QLatin1Char(' ')));
            };
        };
        QObject::connect(&dialog, &VX_SamplingRates::setSamplingRate, &dialog, note("device"));
        QObject::connect(&dialog, &VX_SamplingRates::setGatewaySampling, &dialog, note("gateway"));
        if (cells == Cells::Enabled)
            dialog.Slot_EnableAllBtns();
        dialog.show();
    }

    RateTable *table() const { return childByName<RateTable>(&dialog, "rateTable"); }

    QList<QPushButton *> cells() const
    {
        return table()->findChildren<QPushButton *>(QRegularExpression(QStringLiteral("^[0-9]+,[0-9]+$")));
    }

    QPushButton *cell(const QString &name) const
    {
        return childByName<QPushButton>(table(), name.toLatin1().constData());
    }

    /// Names of the cells that can be clicked.
    QStringList live() const
    {
        return names([](const QPushButton *cell) { return cell->isEnabled(); });
    }

    /// Names of the cells that show as the present one.
    QStringList marked() const
    {
        return names([](const QPushButton *cell) {
            return cell->styleSheet() == QStringLiteral("border: 2px solid blue");
        });
    }

    QStringList take()
    {
        QStringList sent;
        sent.swap(m_sent);
        return sent;
    }

    VX_SamplingRates dialog;

private:
    template <typename Predicate>
    QStringList names(Predicate predicate) const
    {
        QStringList found;
        for (const QPushButton *cell : cells()) {
            if (predicate(cell))
                found.append(cell->objectName());
        }
        return found;
    }

    QStringList m_sent;
};

/// One row without columns for each of these names.
inline void addRows(const QStringList &names)
{
    QTest::addColumn<bool>("unused");
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << true;
}
