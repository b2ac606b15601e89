#pragma once

#include "protocol/records/fastmodulestatus.h"
#include "protocol/records/fastsystemstatus.h"
#include "protocol/records/modulestatus.h"
#include "protocol/records/systemstatus.h"

#include <QString>
#include <QVector>
#include <array>

/// Number of addresses that a report can name.
constexpr int kReportAddresses = 130;
constexpr int kControllerAddress = 0;
constexpr int kPowerAddress = 129; ///< analog modules stand between, from 1 to 128

/// The last status of everything in the system: what all reports are made of. A plain value; nothing that
/// was stored is ever removed.
struct StatusStore
{
    System_Status systemStatus;
    Fast_System_Status fastSystemStatus;
    std::array<Module_Status, kReportAddresses> modules;          ///< by address
    std::array<QString, kReportAddresses> eepromText;             ///< by address
    std::array<Fast_Module_Status, kReportAddresses> fastModules; ///< entry i of the reply under index i

    // Set by the first record of each kind, never cleared.
    bool haveSystem = false;
    bool haveFastSystem = false;
    bool haveModule = false;
    bool haveFastModule = false;

    void setSystem(const System_Status &status);
    void setFastSystem(const Fast_System_Status &status);

    /// Keeps the record under its address. Returns false, and changes nothing, for an address beyond the
    /// table.
    bool setModule(const Module_Status &status);

    /// Keeps entry i under index i, for as many entries as there are; those beyond the table are dropped.
    void setFastModules(const QVector<Fast_Module_Status> &entries);

    /// An address beyond the table is dropped.
    void setEepromText(const QString &text, int address);

    /// The records of an address; empty ones for an address beyond the table.
    const Module_Status &module(int address) const;
    const Fast_Module_Status &fastModule(int address) const;

    /// Whether a record of each kind was stored.
    bool isFull() const { return haveSystem && haveFastSystem && haveModule && haveFastModule; }

    /// Whether the system names a power module and its record has a serial number. A system that names one
    /// without such a record is told in the log.
    bool hasPowerModule() const;

    /// Number of addresses, from 1 on, that analog modules can have: the number that the system claims, but
    /// not more than 128.
    int analogModuleCount() const;
};
