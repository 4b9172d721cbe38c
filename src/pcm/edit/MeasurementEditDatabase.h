// Completing a stream from the measurement database: the word that a measurement is a part of,
// and the parts of a measurement.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kavu {

class PcmFormat;
class UserInterface;

/// The attributes of a database record that a place of the frame takes over.
struct DatabaseRecord {
    std::string name;
    std::string root;                 ///< the word on the wire that this one is a part of
    std::string mask;                 ///< "FW" or binary
    std::string transferOrder;        ///< "M", "L", "D"
    std::string parityTransferOrder;  ///< "L", "T", "D"
    std::string parity;               ///< "EV", "OD", "NO", "DE"
};

/// The measurement database, as far as the edit of a frame needs it. Without a step the
/// database is not there.
struct DatabaseSteps {
    /// The record of that name, or nothing.
    std::function<std::optional<DatabaseRecord>(UserInterface*, std::string_view name)> find;
    /// Calls `visit` with each record until it gives false. False if they can not be read.
    std::function<bool(UserInterface*, const std::function<bool(const DatabaseRecord&)>& visit)>
        forEach;
    /// Takes the conversion of a record over to the document.
    std::function<void(UserInterface*, std::string_view name)> addConversion;
    /// Lets the user choose a record; nothing if none was chosen.
    std::function<std::optional<DatabaseRecord>(UserInterface*)> select;

    [[nodiscard]] bool available() const { return find && forEach; }
};

/// What a measurement that was picked from the database brings along.
struct AutoAdd {
    bool root = false;
    bool children = false;
};

/// Adds the root word and the children of a measurement at its place, as far as the stream
/// does not have them. Does nothing with neither wanted, for a place below 0 and without the
/// database. Message 412 for a type other than "MF", "SF" and "WDFR". True if any was added.
bool addRootAndChildren(PcmFormat& format, UserInterface* parent, const DatabaseSteps& database,
                        const AutoAdd& wanted, std::string_view name, std::string_view locationType,
                        int fwp, int fn);

}  // namespace kavu
