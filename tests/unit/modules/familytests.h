#pragma once

#include "familymodule.h"

/// What holds for the controllers and rows of all families. The test of a family inherits it, says which
/// module it is about and adds what only that family does.
class FamilyTests : public QObject
{
    Q_OBJECT

protected:
    /// Module type code of the family.
    virtual int typeCode() const = 0;

    /// One row for each gesture and channel, with the request that it sends to module 3 in the state of
    /// FamilyModule::beginWithDifferentChannels(). See addRequest().
    virtual void addRequests() const = 0;

    /// One row for each slot that asks for a change, with the rest of the request behind its channel.
    virtual void addRequestsOfNoChannel() const = 0;

    static void addRequest(ChannelParameter parameter, Channel channel, int value, const char *request);
    static void addRequestOfNoChannel(ChannelParameter parameter, const char *request);

    /// A row for each parameter that the operator can set, on channel A and on channel B.
    void addParameters() const;

private slots:
    void initTestCase();
    void gestureSendsTheWholeSnapshot_data();
    void gestureSendsTheWholeSnapshot();
    void sendingDoesNotChangeTheDataRecord_data();
    void sendingDoesNotChangeTheDataRecord();
    void channelOtherThanOneAndTwoSendsAndHoldsNothing_data();
    void channelOtherThanOneAndTwoSendsAndHoldsNothing();
    void newRowDoesNotActBeforeItsFirstStatus();
    void foreignStatusDoesNotLetANewRowAct();
    void applyingAStatusSendsNothing();
    void statusUnderAnOpenListSendsNothing();
    void statusShowsTheValuesOfBothChannels();
    void statusFillsTheRecordsOfBothChannels();
    void listIsSplitAtDollars_data();
    void listIsSplitAtDollars();
    void textWithTwoEntriesGivesTwoAndAnEmptyTextNone();
    void newRowHasEmptyBoxes();
    void modelOfABoxStaysForLife();
    void indexBeyondTheListLeavesTheBoxBlank();
    void unreadableFilterTextReadsZero_data();
    void unreadableFilterTextReadsZero();
    void identificationIsStoredButTheSerialNumber();
    void foreignTypeCodeSetsOnlyTheFourLabels_data();
    void foreignTypeCodeSetsOnlyTheFourLabels();
    void foreignNumberChangesNothing_data();
    void foreignNumberChangesNothing();
    void oddStaticVariantChangesNothing_data();
    void oddStaticVariantChangesNothing();
    void oddFastVariantCountsAsADefaultEntry_data();
    void oddFastVariantCountsAsADefaultEntry();
    void fastStatusTakesItsOwnEntry();
    void requestsReachThoseWhoTakeThem();
    void requestsEndWithThoseWhoTakeThem();
    void channelButtonSlotIsEmpty();
    void retiredRowAsksForNothing_data();
    void retiredRowAsksForNothing();
    void retiredRowFetchesNoStatus_data();
    void retiredRowFetchesNoStatus();
    void retiredRowObeysNoGroupCommand();
    void timerThatRunsGoesWithTheController_data();
    void timerThatRunsGoesWithTheController();
    void openListGoesWithTheController();
    void openVersionBoxGoesWithTheController();
};
