kelo_test(glview_tests QT
    SOURCES
        OpenGLViewTest.cpp
        OpenGLViewInputTest.cpp
        SurfacelessTest.cpp
    LINKS keloOpenGL)

# Without an application object.
kelo_test(glview_plain_tests APART
    SOURCES
        OpenGLViewWithoutApplicationTest.cpp
    LINKS keloOpenGL)

# They move the display's one pointer and type on its one keyboard.
kelo_test(glview_window_tests QT
    SOURCES
        ViewContainerTest.cpp
        ViewWindowTest.cpp
    LINKS keloOpenGL
    LABELS window)
