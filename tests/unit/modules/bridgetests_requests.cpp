#include "bridgetests.h"

void BridgeTests::addRequests() const
{
    using P = ChannelParameter;
    addRequest(P::TypeIndex, Channel::A, 0,
               "T1 m3 c1: type 0, range 2, zero 1, offset 1.5, filter 1000, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 1");
    addRequest(P::TypeIndex, Channel::B, 0,
               "T1 m3 c2: type 0, range 1, zero 0, offset Auto, filter 1300, inverted 1, shunt 1, level 0, "
               "lists 0+0, "
               "selector 1");
    addRequest(P::RangeIndex, Channel::A, 0,
               "T1 m3 c1: type 1, range 0, zero 1, offset 1.5, filter 1000, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 2");
    addRequest(P::RangeIndex, Channel::B, 2,
               "T1 m3 c2: type 2, range 2, zero 0, offset Auto, filter 1300, inverted 1, shunt 1, level 0, "
               "lists 0+0, "
               "selector 2");
    addRequest(
        P::ManualOffset, Channel::A, 2,
        "T1 m3 c1: type 1, range 2, zero 1, offset -2.25, filter 1000, inverted 0, shunt 0, level 0, lists "
        "0+0, selector 3");
    addRequest(P::ManualOffset, Channel::A, 0,
               "T1 m3 c1: type 1, range 2, zero 1, offset Auto, filter 1000, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 3");
    addRequest(
        P::ManualOffset, Channel::B, 2,
        "T1 m3 c2: type 2, range 1, zero 0, offset -2.25, filter 1300, inverted 1, shunt 1, level 0, lists "
        "0+0, selector 3");
    addRequest(P::Filter, Channel::A, 1,
               "T1 m3 c1: type 1, range 2, zero 1, offset 1.5, filter 1200, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 4");
    addRequest(P::Filter, Channel::B, 1,
               "T1 m3 c2: type 2, range 1, zero 0, offset Auto, filter 1200, inverted 1, shunt 1, level 0, "
               "lists 0+0, "
               "selector 4");
    addRequest(P::Autozero, Channel::A, 1,
               "T1 m3 c1: type 1, range 2, zero 1, offset 1.5, filter 1000, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 5");
    addRequest(P::Autozero, Channel::B, 1,
               "T1 m3 c2: type 2, range 1, zero 1, offset Auto, filter 1300, inverted 1, shunt 1, level 0, "
               "lists 0+0, "
               "selector 5");
    addRequest(P::ReversePolarity, Channel::A, 1,
               "T1 m3 c1: type 1, range 2, zero 1, offset 1.5, filter 1000, inverted 1, shunt 0, level 0, "
               "lists 0+0, "
               "selector 6");
    addRequest(P::ReversePolarity, Channel::B, 0,
               "T1 m3 c2: type 2, range 1, zero 0, offset Auto, filter 1300, inverted 0, shunt 1, level 0, "
               "lists 0+0, "
               "selector 6");
    addRequest(
        P::Shunt, Channel::A, 1,
        "T1 m3 c1: type 1, range 2, zero 1, offset 1.5, filter 1000, inverted 0, shunt 131, level 0, lists "
        "0+0, selector 7");
    addRequest(
        P::Shunt, Channel::B, 1,
        "T1 m3 c2: type 2, range 1, zero 0, offset Auto, filter 1300, inverted 1, shunt 131, level 0, lists "
        "0+0, selector 7");
    addRequest(P::Autozero, Channel::A, 2,
               "T1 m3 c1: type 1, range 2, zero 1, offset 1.5, filter 1000, inverted 0, shunt 0, level 0, "
               "lists 0+0, "
               "selector 8");
    addRequest(P::Autozero, Channel::B, 2,
               "T1 m3 c2: type 2, range 1, zero 1, offset Auto, filter 1300, inverted 1, shunt 1, level 0, "
               "lists 0+0, "
               "selector 8");
}

void BridgeTests::addRequestsOfNoChannel() const
{
    using P = ChannelParameter;
    addRequestOfNoChannel(
        P::TypeIndex,
        "T1 m3 c%1: type 2, range 0, zero 0, offset , filter 0, inverted 0, shunt 0, level 0, lists "
        "0+0, selector 1");
    addRequestOfNoChannel(
        P::RangeIndex,
        "T1 m3 c%1: type 0, range 1, zero 0, offset , filter 0, inverted 0, shunt 0, level 0, lists "
        "0+0, selector 2");
    addRequestOfNoChannel(
        P::ManualOffset,
        "T1 m3 c%1: type 0, range 0, zero 0, offset 7, filter 0, inverted 0, shunt 0, level 0, "
        "lists 0+0, selector 3");
    addRequestOfNoChannel(
        P::Filter, "T1 m3 c%1: type 0, range 0, zero 0, offset , filter 300, inverted 0, shunt 0, level 0, "
                   "lists 0+0, selector 4");
    addRequestOfNoChannel(
        P::Autozero,
        "T1 m3 c%1: type 0, range 0, zero 1, offset , filter 0, inverted 0, shunt 0, level 0, lists "
        "0+0, selector 5");
    addRequestOfNoChannel(
        P::ReversePolarity,
        "T1 m3 c%1: type 0, range 0, zero 0, offset , filter 0, inverted 1, shunt 0, level 0, lists "
        "0+0, selector 6");
    addRequestOfNoChannel(
        P::Shunt, "T1 m3 c%1: type 0, range 0, zero 0, offset , filter 0, inverted 0, shunt 131, level 0, "
                  "lists 0+0, selector 7");
}
