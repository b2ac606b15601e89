#include "base/settingsfolder.h"

#include <QtTest>

class TstSettingsFolder : public QObject
{
    Q_OBJECT

private slots:
    void folderIsFixedBelowThePlatformsPlace();
};

void TstSettingsFolder::folderIsFixedBelowThePlatformsPlace()
{
#ifdef Q_OS_WIN
    QCOMPARE(settingsFolder(), QStringLiteral("C:/ProgramData/qor/vxconfig"));
#else
    qputenv("XDG_CONFIG_HOME", "/some/place");
    QCOMPARE(settingsFolder(), QStringLiteral("/some/place/qor/vxconfig"));
#endif
}

QTEST_GUILESS_MAIN(TstSettingsFolder)
#include "tst_settingsfolder.moc"
