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

/// The measurement database, as far as the edit of a frame needs it. Without the first
/// two steps there is no database.
struct DatabaseSteps {
    /// The record of that name, or nothing.
    std::function<std::optional<DatabaseRecord>(UserInterface*, std::string_view name)> find;
    /// Calls `visit` with each record whose root word has exactly this name, until it returns
    /// false. False if they cannot be read.
    std::function<bool(UserInterface*, std::string_view root,
                       const std::function<bool(const DatabaseRecord&)>& visit)>
        forEachChild;
    /// Copies the conversion of a record to the document.
    std::function<void(UserInterface*, std::string_view name)> addConversion;
    /// Lets the user choose a record; nothing if none was chosen.
    std::function<std::optional<DatabaseRecord>(UserInterface*)> select;

    /// False once the database has been switched off; without it it is on.
    std::function<bool()> isOn{};

    [[nodiscard]] bool available() const { return find && forEachChild && (!isOn || isOn()); }
};

/// What is added with a measurement that was picked from the database.
struct AutoAdd {
    bool root = false;
    bool children = false;
    bool isLogged = false;  ///< message 412 goes to the log: there are many measurements
};

/// Adds the root word and the children of a measurement at its place, if the stream does not
/// have them. Does nothing if neither is wanted, for a place below 0 and without the
/// database. Message 412 ("Unable to add 'Root Word'") for a type other than "MF", "SF" and
/// "WDFR", and for a "WDFR" measurement of several fragments. True if any was added.
bool addRootAndChildren(PcmFormat& format, UserInterface* parent, const DatabaseSteps& database,
                        const AutoAdd& wanted, std::string_view name, std::string_view locationType,
                        int fwp, int fn);

}  // namespace kavu
