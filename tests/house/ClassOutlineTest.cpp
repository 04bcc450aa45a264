#include "tests/house/ClassOutline.h"

#include <gtest/gtest.h>

using namespace kelo::test;

namespace {

using Outlines = std::vector<ClassOutline>;
using Operations = std::vector<Operation>;

} // namespace

TEST(ClassOutline, countsPublicMethodsAndFields)
{
    EXPECT_EQ(classesIn("class KELO_EXPORT View : public Base,\n"
                        "                         public Other\n"
                        "{\n"
                        "    void hiddenAtFirst();\n"
                        "\n"
                        "public:\n"
                        "    /// A comment (with parentheses);\n"
                        "    explicit View(int x);\n"
                        "    View(const View &) = delete;\n"
                        "    std::vector<int> list(const std::map<int, int> &map,\n"
                        "                          int further) const;\n"
                        "    template<class T>\n"
                        "    T made();\n"
                        "    bool operator<(const View &) const;\n"
                        "    using Name = std::string;\n"
                        "    static constexpr int limit = 3;\n"
                        "\n"
                        "protected:\n"
                        "    void reachable();\n"
                        "\n"
                        "private:\n"
                        "    std::function<void(int, int)> call_;\n"
                        "    double x_ = 0.0, y_ = f(1, 2);\n"
                        "    int z_{3}; ///< a comment\n"
                        "};\n"),
              (Outlines{{"View", 4, 4, {}}}));
}

TEST(ClassOutline, aStructIsPublicAndNestedOnesAreTheirOwn)
{
    EXPECT_EQ(classesIn("struct Outer\n{\n"
                        "    struct Inner\n    {\n        int a = 0;\n        void f();\n    };\n"
                        "    enum class Kind {\n        One,\n        Two,\n    };\n"
                        "    Inner inner;\n    void g();\n    void h();\n};\n"
                        "struct Declared;\n"),
              (Outlines{{"Inner", 1, 1, {}}, {"Outer", 2, 1, {}}}));
}

TEST(ClassOutline, bodiesInAClassHaveALength)
{
    EXPECT_EQ(
        classesIn("class View\n{\n"
                  "public:\n"
                  "    int one() const { return 1; }\n"
                  "    void none() {}\n"
                  "    void two(int a,\n"
                  "             int b)\n"
                  "    {\n"
                  "        // Why.\n"
                  "        f(a);\n"
                  "\n"
                  "        g(b);\n"
                  "    }\n"
                  "    void after();\n"
                  "};\n"),
        (Outlines{{"View", 4, 0, {{"View", "one", 1}, {"View", "none", 0}, {"View", "two", 2}}}}));
}

TEST(ClassOutline, bodiesOutsideOfTheirClassesHaveALength)
{
    EXPECT_EQ(operationsIn("View::View(int x)\n"
                           "    : Base(x), y_(Other::made(x))\n"
                           "{}\n"
                           "View::~View() = default;\n"
                           "void View::none(const Event &) {}\n"
                           "const std::map<int, int> &\n"
                           "View::far(int a,\n"
                           "          int b) const\n"
                           "{\n"
                           "    if (a) {\n"
                           "        // Why.\n"
                           "        f(b);\n"
                           "    }\n"
                           "\n"
                           "    return g(b); // why\n"
                           "}\n"
                           "struct View::Parts\n{\n    int a = 0;\n};\n"
                           "int free(int a)\n{\n    return View::made(a);\n}\n"),
              (Operations{{"View", "View", 0}, {"View", "none", 0}, {"View", "far", 4}}));
}
