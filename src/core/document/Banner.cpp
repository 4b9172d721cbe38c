#include "core/document/Banner.h"

#include "core/text/Printf.h"

#include <iterator>

namespace kavu {

namespace {

constexpr std::string_view kCommentHead = "COMMENT: ";
constexpr std::string_view kSigned = " by the KAVU Software;";

std::string bannerLine(std::string_view text) {
    return std::string(kCommentHead).append(text).append(";");
}

}  // namespace

std::string bannerText(const CivilTime& now, bool created) {
    const std::string line =
        formatPrintf("This file %s on %s at %s by the KAVU Software;",
                     created ? "created" : "saved", dateText(now), timeText(now));
    const std::string rule(line.size() - 1, '*');
    std::string banner;
    for (const auto& text : {rule, line.substr(0, line.size() - 1), std::string(kBannerMaker),
                             std::string(kBannerHelp), rule}) {
        banner.append(bannerLine(text)).append("\r\n");
    }
    return banner;
}

std::vector<FileComment> BannerFilter::add(FileComment comment) {
    waiting_.push_back(std::move(comment));
    if (waiting_.size() < kBannerLines) {
        return {};
    }
    if (isBanner()) {
        waiting_.clear();
        return {};
    }
    std::vector<FileComment> first;
    first.push_back(std::move(waiting_.front()));
    waiting_.pop_front();
    return first;
}

std::vector<FileComment> BannerFilter::end() {
    std::vector<FileComment> rest(std::make_move_iterator(waiting_.begin()),
                                  std::make_move_iterator(waiting_.end()));
    waiting_.clear();
    return rest;
}

bool BannerFilter::isBanner() const {
    const std::string_view rule = waiting_[0].text;
    const std::string_view line = waiting_[1].text;
    const auto stars = rule.substr(0, rule.size() - 1);
    return stars.starts_with(kCommentHead) && stars.size() > kCommentHead.size() &&
           stars.find_first_not_of('*', kCommentHead.size()) == std::string_view::npos &&
           (line.starts_with("COMMENT: This file saved on ") ||
            line.starts_with("COMMENT: This file created on ")) &&
           line.ends_with(kSigned) && waiting_[2].text == bannerLine(kBannerMaker) &&
           waiting_[3].text == bannerLine(kBannerHelp) && waiting_[4].text == rule;
}

}  // namespace kavu
