#include "platform/Workspace.h"

#include <gtest/gtest.h>

#include <string>

namespace ovin {
namespace {

TEST(Workspace, OnlyWebPagesAndLettersAreOpened) {
    for (const char* url :
         {"https://ovin.example/", "http://ovin.example", "HTTPS://OVIN.example", "mailto:a@b.example?subject=x"}) {
        EXPECT_TRUE(mayBeOpened(url)) << url;
    }
    for (const std::string& url :
         {std::string(), std::string("file:///etc/passwd"), std::string("/etc/passwd"), std::string("--version"),
          std::string("javascript:alert(1)"), std::string("https:"), std::string("https://"), std::string("mailto:"),
          std::string("ssh://host"), std::string("https:ovin.example"), std::string(" https://ovin.example"),
          std::string("https://a b"), std::string("https://a\nb"), std::string("https://a\0b", 11),
          std::string("xhttps://a")}) {
        EXPECT_FALSE(mayBeOpened(url)) << url;
    }
}

}  // namespace
}  // namespace ovin
