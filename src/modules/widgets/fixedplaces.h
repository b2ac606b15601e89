#pragma once

#include <QLayout>

/// The layout of a widget that gives its children their places itself: it holds nothing and moves nothing. A
/// child whose style sheet changes tells the layout of its parent. To a parent without one it posts an event
/// instead, several times for each change, and each time all posted events are looked through for one like
/// it; when hundreds of channels change at once, that took half of the time.
class FixedPlaces : public QLayout
{
    Q_OBJECT

public:
    /// To be given to a widget by setLayout().
    FixedPlaces() = default;

    /// Nothing can be put in.
    void addItem(QLayoutItem *item) override;
    int count() const override;
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;
    QSize sizeHint() const override;

    /// There is nothing to lay out again.
    void invalidate() override;
};
