#pragma once

/// Values that name the operator's own service; each operator sets their own.
namespace karvel::configured {

/// Server of the service site where no server list says otherwise.
inline constexpr const char* kServiceHost = "ftp.service.example";
/// Mail and account domain where no server list says otherwise.
inline constexpr const char* kServiceDomain = "shop.service.example";
/// A server whose name contains this word belongs to the hosting provider, which forms account
/// names in its own way.
inline constexpr const char* kProviderWord = "hosting";
/// Password prefixes of the service's accounts: on its own servers, and at the provider.
inline constexpr const char* kPasswordPrefix = "kv";
inline constexpr const char* kProviderPasswordPrefix = "KV";
/// The hint beside the field of the server's name.
inline constexpr const char* kSiteNote = "※データ転送先のFTPサイトを設定　(例)　ftp.example.com";

}  // namespace karvel::configured
