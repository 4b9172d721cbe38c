// The working files of a translator session: their names, each of which begins with the number of
// the session, and the file of its error texts.
#pragma once

#include "core/files/IoStatus.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kavu {

class WorkingStore;

class SessionFiles {
  public:
    /// The store must outlive the object.
    SessionFiles(WorkingStore& store, int instance) : store_(store), instance_(instance) {}

    /// "1KavuTSDK_P.3"; G and H have the number 0.
    [[nodiscard]] std::string groupName(char letter, std::int64_t number) const;
    /// The commands of the C group, as they are.
    [[nodiscard]] std::string conversionsName() const;
    [[nodiscard]] std::string errorName() const;
    [[nodiscard]] std::string pathOf(std::string_view name) const;

    /// Deletes every file of the session.
    void removeAll();
    /// Makes `name` a name of the working file `from` too. A file that does not exist is left out.
    IoStatus link(std::string_view from, const std::string& name);
    /// Appends to the file of error texts.
    IoStatus appendError(std::string_view text);

  private:
    WorkingStore& store_;
    int instance_;
};

}  // namespace kavu
