#pragma once

#include "reports/sensorinf.h"

#include <QAbstractTableModel>
#include <functional>
#include <vector>

/// What a report covers; the values are agreed.
enum class ReportKind {
    Concise = 1,  ///< overview of the chosen modules
    Complete = 2, ///< all modules
    Module = 3    ///< one module
};

/// The modules that the report dialog shows, each with its check mark: column 0 the mark, 1 the type, 2 the
/// serial number.
class SensorModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { MarkColumn, TypeColumn, SerialColumn, ColumnCount };

    explicit SensorModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// Takes the check state of column 0; everything else is refused.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

    /// What a click means from now on; changes no mark.
    void setKind(ReportKind kind);

    /// Sets all marks.
    void checkAll(Qt::CheckState state);

    /// Marks the first row and no other.
    void checkFirstOnly();

    /// Appends a row with the mark that it brings.
    void addModule(const SensorInf &module);

    /// Removes the rows, from the last to the first.
    void clear();

    bool isSelected(quint8 address) const; ///< a row of this address is marked
    bool isKnown(quint8 address) const;    ///< there is a row of this address
    bool allChecked() const;               ///< false without rows

    /// Address of the first marked row, 0 if there is none.
    quint8 firstChecked() const;

public slots:
    /// Data changed: after a change of marks tells how many there are.
    void handleData(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QVector<int> &roles);

    /// The row was clicked: toggles its mark, or marks it alone, or does nothing, by the kind of report.
    void onTableClicked(const QModelIndex &index);

signals:
    void singleModChecked();    ///< after a change of marks exactly one row is marked
    void MultipleModsChecked(); ///< after a change of marks more than one is marked; name as agreed

private:
    bool isCell(const QModelIndex &index) const; ///< false also for cells of another model
    void toggle(const QModelIndex &clicked);
    void checkOnly(int row);
    void setMarks(const std::function<Qt::CheckState(int row)> &markOf);

    std::vector<SensorInf> m_modules;
    ReportKind m_kind = ReportKind::Concise;
};
