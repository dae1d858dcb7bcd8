#pragma once

#include <functional>
#include <gtest/gtest.h>
#include <pthread.h>

namespace orvane::test {

/// Runs `work` in a thread with a stack of 256 KB, where a recursion on data would end at once.
/// The sanitizers need more room for each call.
inline void RunOnSmallStack(const std::function<void()>& work) {
#if defined(__SANITIZE_ADDRESS__)
  constexpr size_t stackSize = 1024 * 1024;
#else
  constexpr size_t stackSize = 256 * 1024;
#endif
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, stackSize), 0);
  pthread_t thread{};
  const auto run = [](void* argument) -> void* {
    (*static_cast<const std::function<void()>*>(argument))();
    return nullptr;
  };
  std::function<void()> copy = work;
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &copy), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

}  // namespace orvane::test
