// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mpv_socket.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <string_view>

#include "core/paths.h"
#include "files/descriptor.h"
#include "files/environment.h"

namespace tunemeadow {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kMpvPatience{300};
constexpr std::string_view kOwnAnswer = "\"request_id\":71";  // events on the same socket have none

/// A JSON text. Bytes that are not UTF-8 go as they are, which mpv takes.
std::string QuotedForMpv(std::string_view text) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string quoted = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') quoted += '\\';
    if (byte < ' ') {
      quoted.append("\\u00").append(1, kHex[byte >> 4U]).append(1, kHex[byte & 15U]);
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

std::string CommandLineForMpv(std::span<const std::string> words) {
  std::string line = "{\"command\":[";
  for (std::size_t i = 0; i < words.size(); ++i) {
    line.append(i == 0 ? "" : ",").append(QuotedForMpv(words[i]));
  }
  return line + "],\"request_id\":71}\n";
}

/// Not open where nobody listens.
Descriptor ConnectToMpv() {
  const std::string path = MpvSocketPath();
  sockaddr_un address{};
  if (path.empty() || path.size() >= sizeof address.sun_path) return {};
  address.sun_family = AF_UNIX;
  std::copy(path.begin(), path.end(), std::begin(address.sun_path));
  Descriptor socket_end(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (connect(socket_end.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return {};
  }
  return socket_end;
}

/// Whether that is possible before the time is over.
bool WaitForMpv(int socket_end, short event, Clock::time_point last) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(last - Clock::now());
  pollfd waiting{.fd = socket_end, .events = event, .revents = 0};
  return poll(&waiting, 1, std::max(0, static_cast<int>(left.count()))) > 0;
}

bool SendToMpv(int socket_end, std::string_view line, Clock::time_point last) {
  while (!line.empty()) {
    const ssize_t sent = send(socket_end, line.data(), line.size(), MSG_NOSIGNAL);
    if (sent > 0) line.remove_prefix(static_cast<std::size_t>(sent));
    if (sent > 0 || errno == EINTR) continue;
    if (errno != EAGAIN || !WaitForMpv(socket_end, POLLOUT, last)) return false;
  }
  return true;
}

/// The line of the answer, the lines of events before it skipped.
std::optional<std::string> AnswerOfMpv(int socket_end, Clock::time_point last) {
  std::string lines;
  std::array<char, 4096> bytes{};
  while (WaitForMpv(socket_end, POLLIN, last)) {
    const ssize_t got = recv(socket_end, bytes.data(), bytes.size(), 0);
    if (got == 0 || (got < 0 && errno != EAGAIN && errno != EINTR)) return std::nullopt;
    if (got > 0) lines.append(bytes.data(), static_cast<std::size_t>(got));
    for (std::size_t end = 0; (end = lines.find('\n')) != std::string::npos;) {
      const std::string line = lines.substr(0, end);
      if (line.find(kOwnAnswer) != std::string::npos) return line;
      lines.erase(0, end + 1);
    }
  }
  return std::nullopt;
}

}  // namespace

std::string MpvSocketPath() {
  const std::string folder = EnvironmentText("XDG_RUNTIME_DIR");
  return folder.starts_with('/') ? JoinPath(folder, "tunemeadow-mpv") : std::string();
}

std::optional<std::string> AskMpv(std::span<const std::string> words) {
  const Descriptor socket_end = ConnectToMpv();
  const Clock::time_point last = Clock::now() + kMpvPatience;
  if (!socket_end.IsOpen() || !SendToMpv(socket_end.get(), CommandLineForMpv(words), last)) {
    return std::nullopt;
  }
  auto answer = AnswerOfMpv(socket_end.get(), last);
  if (!answer || answer->find(R"("error":"success")") == std::string::npos) return std::nullopt;
  return answer;
}

}  // namespace tunemeadow
