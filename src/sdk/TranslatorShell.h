// The frame around a translator: it runs a conversion on a session, writes its log, and asks what
// is to be done with it.
#pragma once

#include "core/files/Environment.h"
#include "core/text/Clock.h"
#include "sdk/TranslatorConfiguration.h"

#include <functional>
#include <string>
#include <vector>

namespace kavu {

class FileWriter;
class TranslatorSdk;
class UserInterface;

/// Shows a file by a program that the user has chosen.
using ViewFile = std::function<void(const std::string& path, const std::string& editor)>;

class TranslatorShell {
  public:
    /// The translator, which may be null, has to stay loaded. `folder` is where the settings and
    /// the log are. The clock and the random source must outlive the object.
    TranslatorShell(const kavu_translator* translator, std::string folder, Environment environment,
                    const Clock& clock, RandomSource& random, ViewFile viewFile = {});

    /// Converts a TMATS file: true if the translator says that it has. What it, or the session, had
    /// to say is in the log, about which the user is asked. `output` is the setup file; one that
    /// exists is replaced only by the translator.
    bool Convert(UserInterface* parent, const std::string& tmatsFile, const std::string& output);
    /// The configuration of the translator, for a dialog. Without a translator it has only the rows
    /// of all translators.
    [[nodiscard]] TranslatorConfiguration EditConfiguration(UserInterface* parent) const;

    [[nodiscard]] std::string logPath() const;

  private:
    bool openLog(UserInterface* parent, const std::string& tmatsFile, FileWriter& log);
    bool chooseStreams(UserInterface* parent, const TranslatorConfiguration& configuration,
                       const TranslatorSdk& sdk, std::vector<int>& streams) const;
    void offerLog(UserInterface* parent, const TranslatorConfiguration& configuration) const;

    const kavu_translator* translator_;
    std::string folder_;
    Environment environment_;
    const Clock& clock_;
    RandomSource& random_;
    ViewFile viewFile_;
};

/// The path that a setup file has if the user chooses none: that of the TMATS file with another
/// ending.
[[nodiscard]] std::string setupFileOf(const std::string& tmatsFile,
                                      const kavu_translator& translator);

}  // namespace kavu
