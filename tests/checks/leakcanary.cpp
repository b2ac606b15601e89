// Loses objects on the offscreen platform, as a test with a defect would: in a timer's slot, and in an event
// that the platform brings. Under the sanitizer both leaks must be told at the end, whatever leaks of
// libraries do not count.

#include <QGuiApplication>
#include <QRasterWindow>
#include <QTimer>

namespace {

constexpr int kObjects = 8; ///< a stale copy of a pointer may save one of them

struct Canary
{
    int number = 0;
};

Canary *volatile last = nullptr;

void loseOne()
{
    last = new Canary;
    last = nullptr;
}

void loseInSlot()
{
    for (int i = 0; i < kObjects; ++i)
        loseOne();
}

void loseInEvent()
{
    for (int i = 0; i < kObjects; ++i)
        loseOne();
}

class Window : public QRasterWindow
{
protected:
    void exposeEvent(QExposeEvent *event) override
    {
        loseInEvent();
        QRasterWindow::exposeEvent(event);
        QTimer::singleShot(0, this, [] {
            loseInSlot();
            QCoreApplication::quit();
        });
    }
};

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication app(argc, argv);
    Window window;
    window.show();
    return QGuiApplication::exec();
}
