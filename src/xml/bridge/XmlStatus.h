// What a conversion between TMATS and TMATS XML says while it works.
#pragma once

#include <functional>
#include <string>

namespace kavu {

enum class XmlStatusLevel { Status, Warning };
using XmlStatusCallback = std::function<void(XmlStatusLevel, const std::string&)>;

}  // namespace kavu
