// How a scale hands over its weights. The user's settings keep the number ("ProtocoloBal").
#pragma once

namespace host {

enum class ScaleProtocol {
  kPrinted = 0,  // it has sent when its port is read
  kAsked = 1,    // it answers a request
  kContinuous = 2,
};

inline constexpr int kLastScaleProtocol = static_cast<int>(ScaleProtocol::kContinuous);

}  // namespace host
