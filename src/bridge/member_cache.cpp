#include "bridge/member_cache.h"

#include <unordered_map>

namespace cadtools::bridge::detail {

namespace {

// A 32-bit number as two units of a key.
void Append(WString& key, std::int32_t n) {
  const auto u = static_cast<std::uint32_t>(n);
  key.push_back(static_cast<WCHAR>(u & 0xFFFFU));
  key.push_back(static_cast<WCHAR>(u >> 16U));
}

std::int32_t Resolve(std::int32_t type, std::int32_t how, WStringView name, const SeamArgs& args) {
  Result r;
  Table().resolve(type, how, name.data(), static_cast<std::int32_t>(name.size()), args.data(), args.size(), r.get());
  return r.Int();
}

}  // namespace

std::int32_t FindMember(std::int32_t type, std::int32_t how, WStringView name, const SeamArgs& args) {
  thread_local std::unordered_map<WString, std::int32_t> members;
  // The key: how, type, then each argument's kind and type, then the name.
  // Reused, so that a hit allocates nothing.
  thread_local WString key;
  key.clear();
  Append(key, how);
  Append(key, type);
  for (std::int32_t i = 0; i < args.size(); ++i) {
    Append(key, args.data()[i].kind);
    Append(key, args.data()[i].type);
  }
  key.append(name);
  if (const auto hit = members.find(key); hit != members.end()) return hit->second;
  const std::int32_t id = Resolve(type, how, name, args);
  members.emplace(key, id);
  return id;
}

std::int32_t FindTypeId(WStringView name) {
  thread_local std::unordered_map<WString, std::int32_t> types;
  thread_local WString key;
  key.assign(name);
  if (const auto hit = types.find(key); hit != types.end()) return hit->second;
  Result r;
  Table().find_type(name.data(), static_cast<std::int32_t>(name.size()), r.get());
  const std::int32_t id = r.Int();
  types.emplace(key, id);
  return id;
}

}  // namespace cadtools::bridge::detail
