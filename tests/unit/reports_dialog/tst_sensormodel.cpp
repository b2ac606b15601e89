#include "reports/sensormodel.h"
#include "support/messagecatcher.h"

#include <QAbstractItemModelTester>
#include <QtTest>

Q_DECLARE_METATYPE(ReportKind)

namespace {

/// Marks by letters: "x" for a marked row, "-" for others. The addresses count from 10.
void fill(SensorModel &model, const QString &marks)
{
    for (int i = 0; i < marks.size(); ++i)
        model.addModule({QStringLiteral("Voltage"), QStringLiteral("S%1").arg(i),
                         marks.at(i) == QLatin1Char('x') ? Qt::Checked : Qt::Unchecked,
                         static_cast<quint8>(10 + i)});
}

QString marks(const SensorModel &model)
{
    QString letters;
    for (int row = 0; row < model.rowCount(); ++row)
        letters += QLatin1Char(model.index(row, 0).data(Qt::CheckStateRole) == Qt::Checked ? 'x' : '-');
    return letters;
}

/// Changes as "<first row>-<last row>", one after another, if they tell of the mark's column and role only.
QString changes(const QSignalSpy &spy)
{
    QStringList texts;
    for (const QVariantList &change : spy) {
        const auto first = change.at(0).toModelIndex();
        const auto last = change.at(1).toModelIndex();
        const bool isMark = first.column() == 0 && last.column() == 0 &&
                            change.at(2).value<QVector<int>>() == QVector<int>{Qt::CheckStateRole};
        texts.append(isMark ? QStringLiteral("%1-%2").arg(first.row()).arg(last.row())
                            : QStringLiteral("foreign"));
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

class TstSensorModel : public QObject
{
    Q_OBJECT

private slots:
    void headingsAreAsAgreed();
    void cellsShowTheModule();
    void toolTipShowsMarkupAsText();
    void onlyTheMarkIsCheckable();
    void setDataTakesTheMark();
    void setDataRefuses_data();
    void setDataRefuses();
    void foreignIndexesAreRefused();
    void clickActsByKind_data();
    void clickActsByKind();
    void clickInTheCompleteKindIsLogged();
    void clickBesideTheRowsDoesNothing_data();
    void clickBesideTheRowsDoesNothing();
    void kindChangesNoMark();
    void wishTellsWhatChanged_data();
    void wishTellsWhatChanged();
    void manyMarksChangeAtOnce();
    void changeOfMarksIsCounted_data();
    void changeOfMarksIsCounted();
    void onlyAChangeOfMarksIsCounted();
    void rowsAreAppended();
    void rowsAreRemovedFromTheLast();
    void addressesAreFound();
    void firstOfEqualAddressesDoesNotHideTheOther();
    void allCheckedNeedsRows();
    void firstCheckedIsTheFirstInTheTable();
};

void TstSensorModel::headingsAreAsAgreed()
{
    const SensorModel model;
    const auto heading = [&model](int column) {
        return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    };
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(heading(0), QString());
    QCOMPARE(heading(1), QStringLiteral("Module Type"));
    QCOMPARE(heading(2), QStringLiteral("Serial No."));
    QVERIFY(!model.headerData(3, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(-1, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(1, Qt::Vertical, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(1, Qt::Horizontal, Qt::ToolTipRole).isValid());
}

void TstSensorModel::cellsShowTheModule()
{
    SensorModel model;
    model.addModule({QStringLiteral("Strain Gauge"), QStringLiteral("12 34"), Qt::Unchecked, 7});
    QVERIFY(!model.index(0, 0).data(Qt::DisplayRole).isValid());
    QCOMPARE(model.index(0, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(model.index(0, 0).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Strain Gauge 12 34"));
    QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("Strain Gauge"));
    QCOMPARE(model.index(0, 1).data(Qt::AccessibleTextRole).toString(), QStringLiteral("Strain Gauge"));
    QCOMPARE(model.index(0, 2).data().toString(), QStringLiteral("12 34"));
    QCOMPARE(model.index(0, 2).data(Qt::AccessibleTextRole).toString(), QStringLiteral("12 34"));
    for (const int column : {1, 2})
        QVERIFY(!model.index(0, column).data(Qt::CheckStateRole).isValid()); // or it would show a mark too
    QVERIFY(!model.index(0, 2).data(Qt::EditRole).isValid());
}

void TstSensorModel::toolTipShowsMarkupAsText()
{
    SensorModel model;
    model.addModule({QStringLiteral("Voltage"), QStringLiteral("<b>7</b> & 8"), Qt::Checked, 1});
    model.addModule({QStringLiteral("Voltage"), QString(), Qt::Checked, 2});
    QVERIFY(model.index(0, 2)
                .data(Qt::ToolTipRole)
                .toString()
                .contains(QStringLiteral(">&lt;b&gt;7&lt;/b&gt; &amp; 8<")));
    QVERIFY(model.index(0, 1).data(Qt::ToolTipRole).toString().contains(QStringLiteral(">Voltage<")));
    QVERIFY(model.index(0, 0).data(Qt::ToolTipRole).toString().isEmpty());
    QVERIFY(model.index(1, 2).data(Qt::ToolTipRole).toString().isEmpty()); // no empty window either
}

void TstSensorModel::onlyTheMarkIsCheckable()
{
    SensorModel model;
    fill(model, QStringLiteral("x"));
    for (int column = 0; column < 3; ++column) {
        const Qt::ItemFlags flags = model.flags(model.index(0, column));
        QVERIFY(flags & Qt::ItemIsEnabled);
        QVERIFY(flags & Qt::ItemIsSelectable);
        QVERIFY(!(flags & Qt::ItemIsEditable));
        QCOMPARE(bool(flags & Qt::ItemIsUserCheckable), column == 0);
    }
    QCOMPARE(model.flags({}), Qt::ItemFlags(Qt::NoItemFlags));
}

void TstSensorModel::setDataTakesTheMark()
{
    SensorModel model;
    fill(model, QStringLiteral("xx"));
    const QSignalSpy changed(&model, &SensorModel::dataChanged);
    QVERIFY(model.setData(model.index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(marks(model), QStringLiteral("x-"));
    QCOMPARE(changes(changed), QStringLiteral("1-1"));
    QVERIFY(model.setData(model.index(1, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(marks(model), QStringLiteral("xx"));
    QCOMPARE(changes(changed), QStringLiteral("1-1 1-1"));
}

void TstSensorModel::setDataRefuses_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("role");
    const QVariant off(Qt::Unchecked);
    QTest::newRow("type") << 0 << 1 << off << int(Qt::CheckStateRole);
    QTest::newRow("serial number") << 0 << 2 << off << int(Qt::CheckStateRole);
    QTest::newRow("text of the mark") << 0 << 0 << off << int(Qt::EditRole);
    QTest::newRow("row beyond") << 2 << 0 << off << int(Qt::CheckStateRole);
    QTest::newRow("half a mark") << 0 << 0 << QVariant(Qt::PartiallyChecked) << int(Qt::CheckStateRole);
    QTest::newRow("unknown mark") << 0 << 0 << QVariant(3) << int(Qt::CheckStateRole);
    QTest::newRow("no number") << 0 << 0 << QVariant(QStringLiteral("off")) << int(Qt::CheckStateRole);
    QTest::newRow("nothing") << 0 << 0 << QVariant() << int(Qt::CheckStateRole);
}

void TstSensorModel::setDataRefuses()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QVariant, value);
    QFETCH(int, role);
    SensorModel model;
    fill(model, QStringLiteral("xx"));
    const QSignalSpy changed(&model, &SensorModel::dataChanged);
    QVERIFY(!model.setData(model.index(row, column), value, role));
    QCOMPARE(marks(model), QStringLiteral("xx"));
    QCOMPARE(model.index(0, 1).data().toString(), QStringLiteral("Voltage"));
    QCOMPARE(changed.size(), 0);
}

void TstSensorModel::foreignIndexesAreRefused()
{
    SensorModel model;
    SensorModel other;
    fill(model, QStringLiteral("x"));
    fill(other, QStringLiteral("xxx"));
    QVERIFY(!model.data(other.index(2, 1), Qt::DisplayRole).isValid());
    QVERIFY(!model.setData(other.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(marks(model), QStringLiteral("x"));
    QCOMPARE(model.rowCount(model.index(0, 0)), 0);
    QCOMPARE(model.columnCount(model.index(0, 0)), 0);
}

void TstSensorModel::clickActsByKind_data()
{
    QTest::addColumn<ReportKind>("kind");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("changed");
    const auto row = [](const char *name, ReportKind kind, const char *before, const char *after,
                        const char *changed) {
        QTest::newRow(name) << kind << QString::fromLatin1(before) << QString::fromLatin1(after)
                            << QString::fromLatin1(changed);
    };
    row("concise, marked", ReportKind::Concise, "xxxx", "x-xx", "1-1");
    row("concise, not marked", ReportKind::Concise, "----", "-x--", "1-1");
    row("complete, marked", ReportKind::Complete, "xxxx", "xxxx", "");
    row("complete, not marked", ReportKind::Complete, "x-xx", "x-xx", "");
    row("module, another is marked", ReportKind::Module, "x---", "-x--", "0-1");
    row("module, all are marked", ReportKind::Module, "xxxx", "-x--", "0-3");
    row("module, none is marked", ReportKind::Module, "----", "-x--", "1-1");
    row("module, is marked alone", ReportKind::Module, "-x--", "-x--", "");
}

void TstSensorModel::clickActsByKind()
{
    QFETCH(ReportKind, kind);
    QFETCH(QString, before);
    for (int column = 0; column < 3; ++column) {
        MessageCatcher log;
        SensorModel model;
        fill(model, before);
        model.setKind(kind);
        const QSignalSpy changed(&model, &SensorModel::dataChanged);
        model.onTableClicked(model.index(1, column));
        QTEST(marks(model), "after");
        QTEST(changes(changed), "changed");
    }
}

void TstSensorModel::clickInTheCompleteKindIsLogged()
{
    SensorModel model;
    fill(model, QStringLiteral("xx"));
    MessageCatcher log;
    for (const ReportKind kind : {ReportKind::Concise, ReportKind::Module}) {
        model.setKind(kind);
        model.onTableClicked(model.index(1, 0));
    }
    QCOMPARE(log.lines(), QStringList());
    model.setKind(ReportKind::Complete);
    model.onTableClicked(model.index(1, 0));
    QCOMPARE(log.lines(QtDebugMsg), QStringList{QStringLiteral("Mode Not Defined")});
}

void TstSensorModel::clickBesideTheRowsDoesNothing_data()
{
    QTest::addColumn<ReportKind>("kind");
    QTest::newRow("concise") << ReportKind::Concise;
    QTest::newRow("module") << ReportKind::Module;
}

void TstSensorModel::clickBesideTheRowsDoesNothing()
{
    QFETCH(ReportKind, kind);
    SensorModel model;
    fill(model, QStringLiteral("x-x"));
    model.setKind(kind);
    model.onTableClicked({});
    const QModelIndex gone = model.index(2, 0);
    model.clear();
    fill(model, QStringLiteral("xx"));
    model.onTableClicked(gone);
    QCOMPARE(marks(model), QStringLiteral("xx"));
}

void TstSensorModel::kindChangesNoMark()
{
    SensorModel model;
    fill(model, QStringLiteral("x-x"));
    const QSignalSpy changed(&model, &SensorModel::dataChanged);
    for (const ReportKind kind : {ReportKind::Module, ReportKind::Complete, ReportKind::Concise})
        model.setKind(kind);
    QCOMPARE(marks(model), QStringLiteral("x-x"));
    QCOMPARE(changed.size(), 0);
}

void TstSensorModel::wishTellsWhatChanged_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("all");
    QTest::addColumn<QString>("none");
    QTest::addColumn<QString>("firstOnly");
    const auto row = [](const char *before, const char *all, const char *none, const char *firstOnly) {
        QTest::newRow(*before ? before : "no rows")
            << QString::fromLatin1(before) << QString::fromLatin1(all) << QString::fromLatin1(none)
            << QString::fromLatin1(firstOnly);
    };
    row("", "", "", "");
    row("x", "", "0-0", "");
    row("-", "0-0", "", "0-0");
    row("xxxx", "", "0-3", "1-3");
    row("----", "0-3", "", "0-0");
    row("x---", "1-3", "0-0", "");
    row("-x-x", "0-2", "1-3", "0-3");
}

void TstSensorModel::wishTellsWhatChanged()
{
    QFETCH(QString, before);
    const auto changesOf = [&before](const std::function<void(SensorModel &)> &wish, const QString &after) {
        SensorModel model;
        fill(model, before);
        const QSignalSpy changed(&model, &SensorModel::dataChanged);
        wish(model);
        return marks(model) == after ? changes(changed) : QStringLiteral("wrong marks: ") + marks(model);
    };
    const QString none(before.size(), QLatin1Char('-'));
    QTEST(
        changesOf([](SensorModel &m) { m.checkAll(Qt::Checked); }, QString(before.size(), QLatin1Char('x'))),
        "all");
    QTEST(changesOf([](SensorModel &m) { m.checkAll(Qt::Unchecked); }, none), "none");
    const QString first = before.isEmpty() ? QString() : QLatin1Char('x') + none.mid(1);
    QTEST(changesOf([](SensorModel &m) { m.checkFirstOnly(); }, first), "firstOnly");
}

void TstSensorModel::manyMarksChangeAtOnce()
{
    SensorModel model;
    fill(model, QString(130, QLatin1Char('-')));
    const QSignalSpy changed(&model, &SensorModel::dataChanged);
    const QSignalSpy several(&model, &SensorModel::MultipleModsChecked);
    model.checkAll(Qt::Checked);
    QCOMPARE(changes(changed), QStringLiteral("0-129"));
    QCOMPARE(several.size(), 1);
}

void TstSensorModel::changeOfMarksIsCounted_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("single");
    QTest::addColumn<int>("several");
    QTest::newRow("none is left") << "x--" << 0 << 0 << 0;
    QTest::newRow("the first one") << "---" << 1 << 1 << 0;
    QTest::newRow("one is left") << "xx-" << 0 << 1 << 0;
    QTest::newRow("a second one") << "x--" << 2 << 0 << 1;
    QTest::newRow("two are left") << "xxx" << 2 << 0 << 1;
}

void TstSensorModel::changeOfMarksIsCounted()
{
    QFETCH(QString, before);
    QFETCH(int, row);
    SensorModel model;
    fill(model, before);
    const QSignalSpy single(&model, &SensorModel::singleModChecked);
    const QSignalSpy several(&model, &SensorModel::MultipleModsChecked);
    model.onTableClicked(model.index(row, 0));
    QTEST(single.size(), "single");
    QTEST(several.size(), "several");
}

void TstSensorModel::onlyAChangeOfMarksIsCounted()
{
    SensorModel model;
    fill(model, QStringLiteral("x-"));
    const QSignalSpy single(&model, &SensorModel::singleModChecked);
    const QModelIndex cell = model.index(0, 0);
    model.handleData(cell, cell, {Qt::DisplayRole, Qt::ToolTipRole});
    QCOMPARE(single.size(), 0);
    model.handleData(cell, cell, {}); // anything may have changed
    QCOMPARE(single.size(), 1);
    model.handleData(cell, cell, {Qt::DisplayRole, Qt::CheckStateRole});
    QCOMPARE(single.size(), 2);
    emit model.dataChanged(cell, cell);
    QCOMPARE(single.size(), 3);
}

void TstSensorModel::rowsAreAppended()
{
    SensorModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QSignalSpy inserted(&model, &SensorModel::rowsInserted);
    fill(model, QStringLiteral("x-x"));
    QCOMPARE(marks(model), QStringLiteral("x-x"));
    QCOMPARE(inserted.size(), 3);
    QCOMPARE(inserted.last().at(1).toInt(), 2);
    QCOMPARE(inserted.last().at(2).toInt(), 2);
    QCOMPARE(model.index(2, 2).data().toString(), QStringLiteral("S2"));
}

void TstSensorModel::rowsAreRemovedFromTheLast()
{
    SensorModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    fill(model, QStringLiteral("x-x"));
    const QSignalSpy removed(&model, &SensorModel::rowsRemoved);
    model.clear();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(removed.size(), 3);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(removed.at(i).at(1).toInt(), 2 - i);
    model.clear();
    QCOMPARE(removed.size(), 3);
    fill(model, QStringLiteral("-"));
    QCOMPARE(marks(model), QStringLiteral("-"));
}

void TstSensorModel::addressesAreFound()
{
    SensorModel model;
    fill(model, QStringLiteral("x-"));
    QVERIFY(model.isSelected(10) && model.isKnown(10));
    QVERIFY(!model.isSelected(11) && model.isKnown(11));
    QVERIFY(!model.isSelected(12) && !model.isKnown(12));
    QVERIFY(!model.isSelected(0) && !model.isKnown(0));
    model.clear();
    QVERIFY(!model.isSelected(10) && !model.isKnown(10));
}

void TstSensorModel::firstOfEqualAddressesDoesNotHideTheOther()
{
    SensorModel model;
    model.addModule({QString(), QString(), Qt::Unchecked, 5});
    model.addModule({QString(), QString(), Qt::Checked, 5});
    QVERIFY(model.isSelected(5));
}

void TstSensorModel::allCheckedNeedsRows()
{
    SensorModel model;
    QVERIFY(!model.allChecked());
    fill(model, QStringLiteral("xx"));
    QVERIFY(model.allChecked());
    fill(model, QStringLiteral("-"));
    QVERIFY(!model.allChecked());
}

void TstSensorModel::firstCheckedIsTheFirstInTheTable()
{
    SensorModel model;
    QCOMPARE(int(model.firstChecked()), 0);
    model.addModule({QString(), QString(), Qt::Unchecked, 3});
    QCOMPARE(int(model.firstChecked()), 0);
    model.addModule({QString(), QString(), Qt::Checked, 129});
    model.addModule({QString(), QString(), Qt::Checked, 1}); // a lower address, but further down
    QCOMPARE(int(model.firstChecked()), 129);
}

QTEST_GUILESS_MAIN(TstSensorModel)
#include "tst_sensormodel.moc"
