// Large JSON objects: the order of their keys and what happens to keys that come twice.
#include "drawboard/OrderedJson.h"

#include <gtest/gtest.h>

namespace drawboard {
namespace {

TEST(OrderedJson, LargeObjectsAreReadAndChangedAsSmallOnesAre) {
  for (const int count : {5, 31, 32, 33, 200}) {
    std::string text = "{";
    for (int i = count; i > 0; --i) text += "\"k" + std::to_string(i) + "\":0,";
    text += "\"k3\":3,\"k1\":1,\"last\":9}";
    const auto plain = nlohmann::ordered_json::parse(text);
    auto json = OrderedJson::parse(text);
    EXPECT_EQ(json.dump(), plain.dump()) << count;

    // Keys that come by another way or go away are known to the next one that is looked for.
    auto expected = plain;
    const auto change = [](auto& changed) {
      using Object = typename std::decay_t<decltype(changed)>::object_t;
      auto& object = changed.template get_ref<Object&>();
      object.emplace_back("appended", 1);
      object[std::string("appended")] = 2;
      changed.erase("k2");
      object[std::string("last")] = 3;
      object[std::string("k2")] = 4;
    };
    change(json);
    change(expected);
    EXPECT_EQ(json.dump(), expected.dump()) << count;
    change(json);
    const OrderedJson copy = json;
    json.clear();
    json["k2"] = 1;
    EXPECT_EQ(json.dump(), "{\"k2\":1}");
    EXPECT_EQ(copy["k2"], 4);
  }
}

}  // namespace
}  // namespace drawboard
