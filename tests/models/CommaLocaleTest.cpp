#include "tests/support/CommaLocale.h"
#include "models/DXGLightweightModel.h"
#include "models/ToothModelLoader.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <clocale>
#include <fstream>

using namespace kelo;

TEST(CommaLocale, meshesAreReadTheSameUnderADecimalComma)
{
    ASSERT_TRUE(QCoreApplication::instance());
    const test::CommaLocale locale;
    ASSERT_TRUE(locale.set);
    ASSERT_EQ(std::strtof("1.5", nullptr), 1.0f) << "the C library follows the locale";

    const QTemporaryDir folder;
    const std::string path = folder.filePath("mesh.obj").toStdString();
    std::ofstream(path) << "v 1.5 0 0\nv 0 2.25 0\nv 0 0 -0.125\nf 1 2 3\n";
    const auto model = ToothModelLoader::modelFromFile(path);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->extents().description(), "x(0,1.5)y(0,2.25)z(-0.125,0)");
}
