#pragma once

#include "amplifiertests.h"

/// The families whose channels can feed a bridge: shunts and manual offset too.
class BridgeTests : public AmplifierTests
{
    Q_OBJECT

protected:
    // Both families send the same record.
    void addRequests() const override;
    void addRequestsOfNoChannel() const override;

private slots:
    void preselectBits_data();
    void preselectBits();
    void preselectionIsAppliedWithoutSending();
    void shuntOfTheFastStatusHasNoDisplay();
    void shuntGesturesSendTheirCodes_data();
    void shuntGesturesSendTheirCodes();
    void shuntsOfOneModuleRunIndependently();
    void offsetOfTheStatusIsShown_data();
    void offsetOfTheStatusIsShown();
    void offsetDialogStartsWithTheOffsetOfTheStatus();
    void rejectedOffsetSendsNothing();
    void statusUnderTheOffsetDialogSendsNothing();
    void openOffsetDialogGoesWithTheController();
    void offsetAcceptedAfterTheRowWasRetiredSendsNothing();
    void runningShuntGoesWithTheController();
};
