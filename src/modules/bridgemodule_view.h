#pragma once

#include "modules/amplifiermodule_view.h"

#include <string>

class BridgeChannel_View;

/// The row of a module whose channels can feed a bridge: strain gauge and universal modules.
class BridgeModule_View : public AmplifierModule_View
{
    Q_OBJECT

public slots:
    void Slot_SendGainIndex_A(int index);
    void Slot_SendGainIndex_B(int index);
    void Slot_SendManualOffset_A(std::string &value);
    void Slot_SendManualOffset_B(std::string &value);
    void Slot_SendFilterValue_A(int value);
    void Slot_SendFilterValue_B(int value);
    void Slot_SendRevPolState_A(bool state);
    void Slot_SendRevPolState_B(bool state);
    void Slot_SendShuntState_A(uchar value);
    void Slot_SendShuntState_B(uchar value);

signals:
    // The operator's wishes; `ch` is 1 (A) or 2 (B).
    void Signal_SendGainIndex(int ch, int index);
    void Signal_SendManualOffset(int ch, std::string &value); ///< UTF-8; valid during the emission
    void Signal_SendShuntState(int ch, quint8 value);         ///< action byte of the device

protected:
    using AmplifierModule_View::AmplifierModule_View;

    /// Puts the strips into the row and joins what all bridge channels report.
    void setBridgeChannels(BridgeChannel_View *a, BridgeChannel_View *b);
};
