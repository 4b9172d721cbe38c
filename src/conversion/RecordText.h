// One conversion record as TMATS commands. Its fields are put in from wherever they are, and
// come out in the order of writing.
#pragma once

#include "conversion/ConversionFields.h"
#include "conversion/SampleRate.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kavu {

class RecordText {
  public:
    RecordText(int edition, const SampleRateOptions& rates);

    /// Forgets the fields of the record before.
    void clear();
    /// Puts in a field, with its list indices; one that no edition writes is passed over. Of two
    /// with one code, whatever its case, the later one counts. The value has no outer blanks, and
    /// must outlive `write`. False for a field that was passed over, or that takes the place of
    /// another one; of the items of lists this is known only to `repeatedItems`.
    bool put(std::string_view code, std::string_view value);
    /// The same for a code whose row is known.
    bool put(const ConversionCode& row, std::string_view code, std::string_view value);
    /// The value of a code without list indices that was put in; empty if there is none.
    [[nodiscard]] std::string_view value(std::string_view code) const;

    // What a write will do with the fields that were put in.

    /// REQUIRED by the questions below, once all fields are put in.
    void findWritten();
    /// True for a field that `write` writes; `put` has accepted it.
    [[nodiscard]] bool writes(const ConversionCode& row, std::string_view code) const;
    /// How many items of lists take the place of others with their code.
    [[nodiscard]] std::size_t repeatedItems() const;
    /// A count that hides what is there, or is no number.
    struct CountFault {
        std::string_view code;    ///< of the count
        std::string_view stated;  ///< its value; null if it is missing
        int highest = 0;          ///< the highest number of an item; 0 if there is none
    };
    /// Of the lists that are written.
    [[nodiscard]] std::vector<CountFault> countFaults() const;

    /// Writes the record under its new group index. The comment is given, with real line
    /// breaks: it need not be a field. The text lives until the next call.
    const std::string& write(std::int64_t index, std::string_view name, std::string_view comment);

  private:
    /// One step of the writing, of those that the edition has.
    struct Step {
        const ConversionField* field = nullptr;
        std::string head;         ///< the code and its `:`
        std::size_t value = 0;    ///< the place of the value
        std::size_t needs = 0;    ///< that of the count without which it is not written
        std::size_t list = 0;     ///< the list whose items it writes
        std::size_t counted = 0;  ///< the list of the count that it needs
    };
    using Steps = std::vector<Step>;
    struct TypeSteps {
        std::span<const ConversionField> fields;
        Steps steps;
    };
    struct Item {
        std::uint64_t order = 0;  ///< list, number and column, in the order of writing
        std::string_view value{};
    };
    [[nodiscard]] static bool isBeforeOrder(const Item& item, std::uint64_t order) {
        return item.order < order;
    }

    [[nodiscard]] Steps stepsOf(std::span<const ConversionField> fields) const;
    [[nodiscard]] const Steps& stepsOfType(std::string_view type);
    [[nodiscard]] std::string_view valueOf(const Step& step) const;
    [[nodiscard]] int numberAt(std::size_t place) const;
    void sortItems();
    [[nodiscard]] std::string_view type() const;
    /// True for a step of a list that has rows, or whose count says so.
    [[nodiscard]] bool isTaken(const Step& step) const;
    /// The highest number of the items of a list; 0 if there are none.
    [[nodiscard]] int highestOf(std::size_t list) const;
    void writeSteps(const Steps& steps);
    void writeStep(const Step& step);
    void writeItems(const Step& step);
    void command(std::string_view head, std::string_view value);

    int edition_;
    SampleRateOptions rates_;
    Steps common_;
    std::vector<TypeSteps> types_;  ///< of the types met so far
    std::string typeHead_;
    std::string commentHead_;
    std::size_t typePlace_;
    std::size_t formatPlace_;
    std::size_t commentPlace_;

    std::vector<std::string_view> values_;  ///< null for one that is not there
    std::vector<Item> items_;
    std::vector<bool> writtenValues_;
    std::vector<bool> writtenLists_;
    std::vector<const Step*> writtenSteps_;
    std::string prefix_;
    std::string text_;
};

}  // namespace kavu
