// A user interface that nobody sees: it keeps what is reported as findings, and refuses every
// question. For readings of a file that are only made to know what they would report.
#pragma once

#include "core/talk/Findings.h"
#include "core/talk/SilentInterface.h"

#include <string>
#include <vector>

namespace kavu {

class FindingCollector : public SilentInterface {
  public:
    using SilentInterface::SilentInterface;

    /// What is reported from now on comes from here, and is about this stream if there is one.
    void setSource(std::string source, std::string stream = {}) {
        source_ = std::move(source);
        stream_ = std::move(stream);
    }
    [[nodiscard]] const std::vector<Finding>& findings() const { return findings_; }

    Button message(const MessageBox& box) override;
    void logged(const LoggedMessage& message) override;
    void loadRemark(const std::string& text) override;

  private:
    void keep(int id, const std::string& title, const std::string& text);

    std::string source_;
    std::string stream_;
    std::vector<Finding> findings_;
};

}  // namespace kavu
