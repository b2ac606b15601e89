#include "modules/widgets/picturebutton.h"

#include <QHBoxLayout>
#include <QSignalSpy>
#include <QtTest>

class TstPictureButton : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void focusIsVisible_data();
    void focusIsVisible();
    void pictureStaysWithoutFocus();
    void spaceClicks();

private:
    static QString style(const char *picture);
    QImage imageOf(QWidget *button);

    std::unique_ptr<QWidget> m_window;
    PictureButton *m_button = nullptr;
    PictureButton *m_other = nullptr;
};

QString TstPictureButton::style(const char *picture)
{
    return QStringLiteral("QPushButton {border-image: url(:/pictures/%1);}QToolTip {}")
        .arg(QLatin1String(picture));
}

QImage TstPictureButton::imageOf(QWidget *button)
{
    return button->grab().toImage();
}

void TstPictureButton::init()
{
    m_window = std::make_unique<QWidget>();
    auto *layout = new QHBoxLayout(m_window.get());
    m_button = new PictureButton;
    m_other = new PictureButton;
    for (PictureButton *button : {m_button, m_other}) {
        button->setFixedSize(24, 24);
        button->setCheckable(true);
        layout->addWidget(button);
    }
    m_window->show();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void TstPictureButton::focusIsVisible_data()
{
    QTest::addColumn<QString>("style");
    QTest::newRow("unchecked") << style("checkbox_unchecked.png");
    QTest::newRow("confirmed") << style("checkbox_black.png");
    QTest::newRow("sent") << style("checkbox_blue.png");
    QTest::newRow("shunt") << style("shunt_aux_fake.bmp");
    QTest::newRow("offset") << QStringLiteral("border-image: url(:/pictures/editline.png);\ncolor:black;");
    QTest::newRow("no style") << QString();
}

void TstPictureButton::focusIsVisible()
{
    QFETCH(QString, style);
    m_button->setStyleSheet(style);
    m_other->setFocus();
    const QImage without = imageOf(m_button);
    QTest::keyClick(m_other, Qt::Key_Backtab);
    QVERIFY(m_button->hasFocus());
    const QImage with = imageOf(m_button);
    // All along the edge there is the colour of the mark.
    const QColor mark = m_button->palette().color(QPalette::Highlight);
    for (int x = 0; x < with.width(); ++x) {
        QCOMPARE(with.pixelColor(x, 0), mark);
        QCOMPARE(with.pixelColor(x, with.height() - 1), mark);
        QCOMPARE(with.pixelColor(0, x), mark);
        QCOMPARE(with.pixelColor(with.width() - 1, x), mark);
    }
    QVERIFY(without.pixelColor(0, 0) != mark);
}

void TstPictureButton::pictureStaysWithoutFocus()
{
    QPushButton plain(m_window.get());
    plain.resize(24, 24);
    plain.show();
    for (QPushButton *button : {static_cast<QPushButton *>(m_button), &plain}) {
        button->setCheckable(true);
        button->setStyleSheet(style("checkbox_black.png"));
    }
    m_other->setFocus();
    QCOMPARE(imageOf(m_button), imageOf(&plain));
}

void TstPictureButton::spaceClicks()
{
    const QSignalSpy clicked(m_button, &QPushButton::clicked);
    m_button->setFocus();
    QTest::keyClick(m_button, Qt::Key_Space);
    QCOMPARE(clicked.count(), 1);
    QVERIFY(m_button->isChecked());
}

QTEST_MAIN(TstPictureButton)
#include "tst_picturebutton.moc"
