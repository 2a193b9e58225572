// The records of a device, made of the standard MIBs of printers and hosts and of the device tables.
//
// Each is filled from a conversation; false if the device couldn't be asked for it.
#pragma once

#include <string>
#include <vector>

#include "conversation.h"
#include "platform/api/device_module.h"

namespace heron::devicecomm {

bool FillName(Conversation& device, const BdcLink& link, BdcName* name);
/// hrPrinterStatus of the first printer; 0 if it has none.
bool FillStatus(Conversation& device, const BdcLink& link, uint32_t* status);

bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcMemory>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcFirmware>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcOption>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcInputTray>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcOutputTray>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcMediaPath>* records);
bool FillRecords(Conversation& device, const BdcLink& link, std::vector<BdcFinisher>* records);

}  // namespace heron::devicecomm
