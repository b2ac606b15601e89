#include "app/dynamicmodulesframe_view.h"
#include "app/initmodulenotfound_view.h"
#include "protocol/communication.h"
#include "reports/moduleconfigurationmanager.h"
#include "settings/appconfigurationmanager.h"
#include "support/appfixture.h"
#include "system/modulesyssettings_ctrllr.h"
#include "system/modulesyssettings_view.h"

#include <QApplication>
#include <QtTest>

/// In which order the parts of the application come and go.
class TstLifetime : public QObject
{
    Q_OBJECT

public:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void init() { m_fixture = std::make_unique<AppFixture>(); }
    void cleanup() { m_fixture.reset(); }

    void windowShowsBehindTheLinksAndBeforeItsContents();
    void partsEndInTheirOrder();

private:
    std::unique_ptr<AppFixture> m_fixture;
    QStringList m_atFirstShow; ///< the parts that exist when the window is shown
};

bool TstLifetime::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show && qobject_cast<Framework_View *>(watched)) {
        m_atFirstShow.append(QStringLiteral("window"));
        if (m_fixture->serial)
            m_atFirstShow.append(QStringLiteral("links"));
        for (const QWidget *widget : QApplication::allWidgets()) {
            if (qobject_cast<const ModuleSysSettings_View *>(widget))
                m_atFirstShow.append(QStringLiteral("panel"));
            if (qobject_cast<const DynamicModulesFrame_View *>(widget))
                m_atFirstShow.append(QStringLiteral("frame"));
            if (qobject_cast<const InitModuleNotFound_View *>(widget))
                m_atFirstShow.append(QStringLiteral("placeholder"));
        }
    }
    return QObject::eventFilter(watched, event);
}

void TstLifetime::windowShowsBehindTheLinksAndBeforeItsContents()
{
    qApp->installEventFilter(this);
    m_fixture->start();
    qApp->removeEventFilter(this);
    QCOMPARE(m_atFirstShow, (QStringList{QStringLiteral("window"), QStringLiteral("links")}));
    QVERIFY(m_fixture->window()->findChild<ModuleSysSettings_View *>());
    QVERIFY(m_fixture->window()->findChild<DynamicModulesFrame_View *>());
}

void TstLifetime::partsEndInTheirOrder()
{
    m_fixture->start();
    QStringList ended;
    const auto watch = [this, &ended](QObject *part, const QString &name) {
        connect(part, &QObject::destroyed, this, [&ended, name] { ended.append(name); });
    };
    watch(m_fixture->window(), QStringLiteral("view"));
    watch(m_fixture->app->sysSettings(), QStringLiteral("sysSettings"));
    watch(m_fixture->window()->findChild<DynamicModulesFrame_View *>(), QStringLiteral("modulesFrame"));
    watch(m_fixture->app->appConfig(), QStringLiteral("appConfig"));
    watch(m_fixture->app->moduleConfig(), QStringLiteral("moduleConfig"));
    watch(m_fixture->app->communication(), QStringLiteral("communication"));
    m_fixture->app.reset();
    QCOMPARE(ended, (QStringList{QStringLiteral("communication"), QStringLiteral("appConfig"),
                                 QStringLiteral("moduleConfig"), QStringLiteral("modulesFrame"),
                                 QStringLiteral("sysSettings"), QStringLiteral("view")}));
}

QTEST_MAIN(TstLifetime)

#include "tst_lifetime.moc"
