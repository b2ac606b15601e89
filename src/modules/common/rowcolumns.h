#pragma once

#include "protocol/records/moduletypes.h"

/// Where everything stands in the row of an analog module, in pixels. The row must fit into the window,
/// 1160 wide, with the scroll bar and the margins around it taken off. The headers use these columns, and
/// so do the strips of controls under them.
namespace rowcolumns {

constexpr int kRowWidth = 1104; ///< the most that a row may need
constexpr int kRowHeight = 100; ///< for the widest frame that a style draws

constexpr int kStripWidth = 402;  ///< of one channel
constexpr int kHeaderHeight = 34; ///< two lines of text
constexpr int kStripHeight = 38;  ///< an Auto Zero button of two lines
constexpr int kGap = 2;           ///< between two columns

/// One column of a strip; a width of 0 says that the strip has no such column.
struct Column
{
    int left = 0;
    int width = 0;

    constexpr int end() const { return left + width; }
};

struct Columns
{
    Column firstInfo;  ///< bridge type, input or sensor type
    Column secondInfo; ///< range
    Column autozero;   ///< has no header
    Column shunt;
    Column manualOffset;
    Column filter;
    Column revPol;
};

/// The column of this width that follows `previous`.
constexpr Column after(const Column &previous, int width)
{
    return {previous.end() + kGap, width};
}

constexpr Columns strainGaugeColumns()
{
    Columns columns;
    columns.firstInfo = {0, 100};
    columns.secondInfo = after(columns.firstInfo, 60);
    columns.autozero = after(columns.secondInfo, 36);
    columns.shunt = after(columns.autozero, 46);
    columns.manualOffset = after(columns.shunt, 44);
    columns.filter = after(columns.manualOffset, 68);
    columns.revPol = after(columns.filter, 36);
    return columns;
}

constexpr Columns voltageColumns()
{
    Columns columns;
    columns.firstInfo = {0, 120};
    columns.secondInfo = after(columns.firstInfo, 120);
    columns.autozero = after(columns.secondInfo, 38);
    columns.filter = after(columns.autozero, 76);
    columns.revPol = after(columns.filter, 38);
    return columns;
}

constexpr Columns thermoColumns()
{
    Columns columns;
    columns.firstInfo = {0, 150};
    columns.secondInfo = after(columns.firstInfo, 150);
    columns.filter = after(columns.secondInfo, 76);
    return columns;
}

constexpr Columns columns(HeaderForm form)
{
    switch (form) {
    case HeaderForm::Voltage:
        return voltageColumns();
    case HeaderForm::Thermo:
        return thermoColumns();
    case HeaderForm::Controller:
    case HeaderForm::Power:
    case HeaderForm::StrainGauge:
    case HeaderForm::Universal:
        break;
    }
    return strainGaugeColumns();
}

/// What stands in one of the two lines of the shunt column: the sign of the input, its shunt button and the
/// button that preselects it.
struct ShuntColumns
{
    Column sign;
    Column button;
    Column preselect;
};

constexpr int kShuntSide = 18; ///< of its square buttons: two lines of them fit the strip
static_assert(2 * kShuntSide + kGap <= kStripHeight);

constexpr ShuntColumns shuntColumns()
{
    const Column whole = strainGaugeColumns().shunt;
    ShuntColumns columns;
    columns.preselect = {whole.end() - kShuntSide, kShuntSide};
    columns.button = {columns.preselect.left - kShuntSide - 1, kShuntSide};
    columns.sign = {whole.left, columns.button.left - whole.left};
    return columns;
}

static_assert(strainGaugeColumns().revPol.end() <= kStripWidth);
static_assert(voltageColumns().revPol.end() <= kStripWidth);
static_assert(thermoColumns().filter.end() <= kStripWidth);

} // namespace rowcolumns
