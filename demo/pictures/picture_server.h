// The web sites of the demo's world on one port of 127.0.0.1, told apart by the Host that clients name:
// HTTP/1.1 without TLS. Made and ended by the demo server's thread; each client has a thread of its own.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace quillet::demo {

class PictureServer {
 public:
  // `folder` as PictureTable takes it; port 0 lets the system choose.
  PictureServer(const std::filesystem::path& folder, std::uint16_t port);
  ~PictureServer();  // ends every connection and joins, whatever they are at
  PictureServer(const PictureServer&) = delete;
  PictureServer& operator=(const PictureServer&) = delete;

  // Empty when the server listens.
  const std::string& Error() const;
  std::uint16_t Port() const;
  std::vector<std::string> Hosts() const;
  // What was wrong with the table, one text a row.
  const std::vector<std::string>& Problems() const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace quillet::demo
