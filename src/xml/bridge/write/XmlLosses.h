// What a TMATS XML document does not hold of the TMATS file that it is made from.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kavu {

/// The commands of one field that are not in the document.
struct XmlLoss {
    std::string field;  ///< the letter of the group and the field without indices: "R\RMMID"
    std::string code;   ///< of the first one, as the file has it
    std::size_t count = 0;
};

class XmlLosses {
  public:
    /// Notes a command by its code ("R-1\RMMID-1").
    void add(std::string_view code);
    [[nodiscard]] std::size_t total() const { return total_; }
    /// In the order in which the fields were noted first.
    [[nodiscard]] const std::vector<XmlLoss>& list() const { return list_; }

  private:
    std::vector<XmlLoss> list_;
    std::map<std::string, std::size_t, std::less<>> places_;
    std::size_t total_ = 0;
};

}  // namespace kavu
