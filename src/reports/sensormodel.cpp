#include "reports/sensormodel.h"

#include <QDebug>
#include <algorithm>

namespace {

bool isChecked(const SensorInf &module)
{
    return module.checkState == Qt::Checked;
}

/// The text alone: a tool tip would take what a module sent for HTML.
QString toolTip(const QString &text)
{
    if (text.isEmpty())
        return {};
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

QString columnText(const SensorInf &module, int column)
{
    switch (column) {
    case SensorModel::TypeColumn:
        return module.typeName;
    case SensorModel::SerialColumn:
        return module.serialNumber;
    default:
        return {};
    }
}

/// What a screen reader says of a cell. The mark has no text, so it names its module.
QString spokenText(const SensorInf &module, int column)
{
    if (column == SensorModel::MarkColumn)
        return (module.typeName + QLatin1Char(' ') + module.serialNumber).trimmed();
    return columnText(module, column);
}

} // namespace

SensorModel::SensorModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    connect(this, &SensorModel::dataChanged, this, &SensorModel::handleData);
}

int SensorModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_modules.size());
}

int SensorModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant SensorModel::data(const QModelIndex &index, int role) const
{
    if (!isCell(index))
        return {};
    const SensorInf &module = m_modules[static_cast<size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == MarkColumn ? QVariant() : columnText(module, index.column());
    case Qt::CheckStateRole:
        return index.column() == MarkColumn ? QVariant(module.checkState) : QVariant();
    case Qt::ToolTipRole:
        return toolTip(columnText(module, index.column()));
    case Qt::AccessibleTextRole:
        return spokenText(module, index.column());
    default:
        return {};
    }
}

QVariant SensorModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case MarkColumn:
        return QString();
    case TypeColumn:
        return QStringLiteral("Module Type");
    case SerialColumn:
        return QStringLiteral("Serial No.");
    default:
        return {};
    }
}

Qt::ItemFlags SensorModel::flags(const QModelIndex &index) const
{
    if (!isCell(index))
        return Qt::NoItemFlags;
    const Qt::ItemFlags cell = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    return index.column() == MarkColumn ? cell | Qt::ItemIsUserCheckable : cell;
}

bool SensorModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!isCell(index) || index.column() != MarkColumn || role != Qt::CheckStateRole)
        return false;
    bool isNumber = false;
    const int state = value.toInt(&isNumber);
    if (!isNumber || (state != Qt::Checked && state != Qt::Unchecked))
        return false;
    m_modules[static_cast<size_t>(index.row())].checkState = static_cast<Qt::CheckState>(state);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

void SensorModel::setKind(ReportKind kind)
{
    m_kind = kind;
}

void SensorModel::checkAll(Qt::CheckState state)
{
    setMarks([state](int) { return state; });
}

void SensorModel::checkFirstOnly()
{
    checkOnly(0);
}

void SensorModel::checkOnly(int row)
{
    setMarks([row](int other) { return other == row ? Qt::Checked : Qt::Unchecked; });
}

void SensorModel::setMarks(const std::function<Qt::CheckState(int row)> &markOf)
{
    int first = rowCount();
    int last = -1;
    for (int row = 0; row < rowCount(); ++row) {
        Qt::CheckState &mark = m_modules[static_cast<size_t>(row)].checkState;
        const Qt::CheckState wanted = markOf(row);
        if (mark == wanted)
            continue;
        mark = wanted;
        first = std::min(first, row);
        last = row;
    }
    if (first <= last)
        emit dataChanged(index(first, MarkColumn), index(last, MarkColumn), {Qt::CheckStateRole});
}

void SensorModel::addModule(const SensorInf &module)
{
    beginInsertRows({}, rowCount(), rowCount());
    m_modules.push_back(module);
    endInsertRows();
}

void SensorModel::clear()
{
    while (!m_modules.empty()) {
        beginRemoveRows({}, rowCount() - 1, rowCount() - 1);
        m_modules.pop_back();
        endRemoveRows();
    }
}

bool SensorModel::isSelected(quint8 address) const
{
    return std::any_of(m_modules.begin(), m_modules.end(), [address](const SensorInf &module) {
        return module.address == address && isChecked(module);
    });
}

bool SensorModel::isKnown(quint8 address) const
{
    return std::any_of(m_modules.begin(), m_modules.end(),
                       [address](const SensorInf &module) { return module.address == address; });
}

bool SensorModel::allChecked() const
{
    return !m_modules.empty() && std::all_of(m_modules.begin(), m_modules.end(), isChecked);
}

quint8 SensorModel::firstChecked() const
{
    const auto first = std::find_if(m_modules.begin(), m_modules.end(), isChecked);
    return first == m_modules.end() ? quint8{0} : first->address;
}

void SensorModel::handleData(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                             const QVector<int> &roles)
{
    Q_UNUSED(topLeft)
    Q_UNUSED(bottomRight)
    if (!roles.isEmpty() && !roles.contains(Qt::CheckStateRole))
        return;
    const auto marks = std::count_if(m_modules.begin(), m_modules.end(), isChecked);
    if (marks == 1)
        emit singleModChecked();
    else if (marks > 1)
        emit MultipleModsChecked();
}

void SensorModel::onTableClicked(const QModelIndex &index)
{
    switch (m_kind) {
    case ReportKind::Concise:
        toggle(index);
        break;
    case ReportKind::Complete:
        qDebug() << "Mode Not Defined"; // it always covers all modules
        break;
    case ReportKind::Module:
        if (isCell(index))
            checkOnly(index.row());
        break;
    }
}

void SensorModel::toggle(const QModelIndex &clicked)
{
    if (!isCell(clicked))
        return;
    const QModelIndex mark = index(clicked.row(), MarkColumn);
    const bool wasChecked = isChecked(m_modules[static_cast<size_t>(mark.row())]);
    setData(mark, wasChecked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

bool SensorModel::isCell(const QModelIndex &index) const
{
    return index.isValid() && index.model() == this && index.row() < rowCount();
}
