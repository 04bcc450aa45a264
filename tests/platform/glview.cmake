kelo_test(glview_tests QT
    SOURCES
        OpenGLViewTest.cpp
        OpenGLViewInputTest.cpp
        SurfacelessTest.cpp
    LINKS keloOpenGL)

kelo_test(glview_window_tests QT
    SOURCES
        ViewContainerTest.cpp
        ViewWindowTest.cpp
    LINKS keloOpenGL
    LABELS window)
