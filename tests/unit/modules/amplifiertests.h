#pragma once

#include "familytests.h"

/// The families whose channels have an amplifier: Auto Zero, filter frequency and polarity.
class AmplifierTests : public FamilyTests
{
    Q_OBJECT

private slots:
    void polarityBits_data();
    void polarityBits();
    void fastStatusColoursTheAutozeroButton_data();
    void fastStatusColoursTheAutozeroButton();
    void oddFastVariantEndsTheAutozero();
    void statusWhileAutozeroIsHeldSendsNothing();
    void statusWhileTheFilterIsTypedSendsNothing();
    void returnInTheFilterBoxActsOnANewRow();
    void longPressActsOnANewRow();
    void filterLeftAfterTheRowWasRetiredSendsNothing();
    void filterInFocusGoesWithTheController();
    void filterWarningGoesWithTheController();
    void heldAutozeroGoesWithTheController();
};
