#include "firmware/firmwareupdate.h"

#include "ui_firmwareupdate.h"

FirmwareUpdate::FirmwareUpdate(QWidget *parent)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::FirmwareUpdate>())
{
    m_ui->setupUi(this);
}

FirmwareUpdate::~FirmwareUpdate() = default;

void FirmwareUpdate::beginOperation() {}
void FirmwareUpdate::stopCounting() {}
void FirmwareUpdate::Slot_UpdateOrAbortFirmw() {}
void FirmwareUpdate::Slot_SelectFilePath() {}
bool FirmwareUpdate::ReadFileAndSendCommands()
{
    return false;
}
void FirmwareUpdate::Slot_incrementProgress(QVariant) {}
void FirmwareUpdate::Slot_UpdateFirmwrFilePath(QString) {}
