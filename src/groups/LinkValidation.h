// After a load every stream must have a home: a multiplex definition, a recorder, or
// another stream that it is embedded in. A stream without one gets one if the user agrees.
#pragma once

#include "groups/GroupScan.h"

#include <string>
#include <string_view>

namespace kavu {

/// The most data links that a document can have.
inline constexpr std::size_t kMostDataLinks = 99;

/// Checks the links of the P, D, B and A groups, 1 to 99. False if the document cannot be
/// opened: too many links (302 "Too many data link names", 303 "Unable to create new"), a
/// file that could not be read or written, or the user has cancelled. The document counts
/// as changed if a home was made.
bool validateDataLinks(DocumentContext& context, UserInterface* parent);

/// Checks one link: nothing happens if it is in the multiplex list. Otherwise it joins
/// that list, and unless a recorder names it, message 304 ("unresolved data link") asks
/// whether to make a data source and a multiplex definition for it; without a parent the
/// answer is No. `kind` names the stream in messages. False if a needed file could not be
/// made (303 "Unable to create new" if no index is free).
bool resolveDataLink(DocumentContext& context, UserInterface* parent, LinkNames& multiplexed,
                     const LinkNames& recorded, std::string_view kind, const std::string& link);

/// Asks the same (304) for a stream that has been found to have no home, and makes one if the answer
/// is Yes: an operation of its own. False if the answer is No, or if it failed, which has been
/// reported; then nothing has changed.
bool createStreamHome(DocumentContext& context, UserInterface* parent, const std::string& link);

/// Adds the link names of all R groups, 1 to 99: channels, buses, PCM tracks and the
/// subchannels of UART, message and Ethernet channels. False if a file could not be read
/// (reported) or the user has cancelled.
bool gatherRecordedLinks(DocumentContext& context, UserInterface* parent, LinkNames& links);

}  // namespace kavu
