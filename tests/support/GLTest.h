#pragma once

#include "platform/gl.h"

#include <gtest/gtest.h>

/// Every test that draws ends with this line: no error may be pending in the current context.
#define EXPECT_NO_GL_ERROR() EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR))
