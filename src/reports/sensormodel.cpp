#include "reports/sensormodel.h"

SensorModel::SensorModel(QObject *parent)
    : QAbstractTableModel(parent)
{}
int SensorModel::rowCount(const QModelIndex &) const
{
    return 0;
}
int SensorModel::columnCount(const QModelIndex &) const
{
    return ColumnCount;
}
QVariant SensorModel::data(const QModelIndex &, int) const
{
    return {};
}
QVariant SensorModel::headerData(int, Qt::Orientation, int) const
{
    return {};
}
Qt::ItemFlags SensorModel::flags(const QModelIndex &) const
{
    return {};
}
bool SensorModel::setData(const QModelIndex &, const QVariant &, int)
{
    return false;
}
void SensorModel::setKind(ReportKind kind)
{
    m_kind = kind;
}
void SensorModel::checkAll(Qt::CheckState) {}
void SensorModel::checkFirstOnly() {}
void SensorModel::addModule(const SensorInf &) {}
void SensorModel::clear() {}
bool SensorModel::isSelected(quint8) const
{
    return false;
}
bool SensorModel::isKnown(quint8) const
{
    return false;
}
bool SensorModel::allChecked() const
{
    return false;
}
quint8 SensorModel::firstChecked() const
{
    return 0;
}
void SensorModel::handleData(const QModelIndex &, const QModelIndex &, const QVector<int> &) {}
void SensorModel::onTableClicked(const QModelIndex &) {}
