#pragma once

#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

/// A list that scrolls, as the rows of the modules stand in one: a control on top of a page that is higher
/// than the window.
class WheelInArea
{
public:
    /// Takes the control.
    explicit WheelInArea(QWidget *control)
        : m_control(control)
    {
        auto *page = new QWidget;
        auto *layout = new QVBoxLayout(page);
        layout->addWidget(control);
        layout->addStretch();
        page->setFixedSize(200, 1000);
        m_area.setWidget(page);
        m_area.resize(250, 200);
        m_area.show();
    }

    QScrollArea &area() { return m_area; }

    /// How far the page has been scrolled.
    int scrolled() const { return m_area.verticalScrollBar()->value(); }

    /// Turns the wheel over the control, towards the user by one notch.
    void turn()
    {
        const QPointF place = m_control->rect().center();
        QWheelEvent event(place, m_control->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        // As from the window system: only such an event is passed on to the parent.
        QSpontaneKeyEvent::setSpontaneous(&event);
        QCoreApplication::instance()->notify(m_control, &event);
    }

private:
    QScrollArea m_area;
    QWidget *m_control; // child of the page
};
