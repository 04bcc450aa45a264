#include "benchmarks/keloOpenGL/BareProgram.h"

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include <cstdio>
#include <memory>

namespace bare {
namespace {

struct Closer
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

template<class Value>
bool write(std::FILE *file, const Value *values, std::size_t count)
{
    return std::fwrite(values, sizeof(Value), count, file) == count;
}

template<class Value>
bool read(std::FILE *file, Value *values, std::size_t count)
{
    return std::fread(values, sizeof(Value), count, file) == count;
}

void drawBackground(int width, int height)
{
    glDisable(GL_LIGHTING);
    glDepthMask(GL_FALSE);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(0, width, 0, height, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glBegin(GL_QUADS);
    glColor3f(0.29f, 0.58f, 0.73f), glVertex2i(0, 0);
    glColor3f(0.145f, 0.29f, 0.365f), glVertex2i(width, 0);
    glColor3f(0.29f, 0.58f, 0.73f), glVertex2i(width, height);
    glColor3f(0.645f, 0.79f, 0.865f), glVertex2i(0, height);
    glEnd();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    glDepthMask(GL_TRUE);
    glEnable(GL_LIGHTING);
}

} // namespace

bool writeScene(const std::string &path, const Scene &scene)
{
    const File file(std::fopen(path.c_str(), "wb"));
    if (!file) return false;
    const std::uint64_t count = scene.meshes.size();
    bool good = write(file.get(), &scene.window, 1) && write(file.get(), &scene.center, 1) &&
                write(file.get(), &scene.rotation, 1) && write(file.get(), &count, 1);
    for (const Mesh &mesh : scene.meshes) {
        const std::uint64_t sizes[] = {mesh.vertices.size(), mesh.indexes.size()};
        good = good && write(file.get(), sizes, 2) && write(file.get(), &mesh.color, 1) &&
               write(file.get(), &mesh.shininess, 1) &&
               write(file.get(), mesh.vertices.data(), mesh.vertices.size()) &&
               write(file.get(), mesh.indexes.data(), mesh.indexes.size());
    }
    return good;
}

bool readScene(const std::string &path, Scene *scene)
{
    const File file(std::fopen(path.c_str(), "rb"));
    std::uint64_t count = 0;
    if (!file || !read(file.get(), &scene->window, 1) || !read(file.get(), &scene->center, 1) ||
        !read(file.get(), &scene->rotation, 1) || !read(file.get(), &count, 1))
        return false;
    scene->meshes.resize(count);
    for (Mesh &mesh : scene->meshes) {
        std::uint64_t sizes[2];
        if (!read(file.get(), sizes, 2) || !read(file.get(), &mesh.color, 1) ||
            !read(file.get(), &mesh.shininess, 1))
            return false;
        mesh.vertices.resize(sizes[0]);
        mesh.indexes.resize(sizes[1]);
        if (!read(file.get(), mesh.vertices.data(), sizes[0]) ||
            !read(file.get(), mesh.indexes.data(), sizes[1]))
            return false;
    }
    return true;
}

Program::Program(int width, int height) : width_(width), height_(height)
{
    display_ =
        eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (!display_ || !eglInitialize(display_, nullptr, nullptr) || !eglBindAPI(EGL_OPENGL_API))
        return;
    const EGLint attributes[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_DEPTH_SIZE,
                                 24,
                                 EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display_, attributes, &config, 1, &count) || count == 0) return;
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    surface_ = eglCreatePbufferSurface(display_, config, size);
    context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, nullptr);
    usable_ = surface_ && context_ && eglMakeCurrent(display_, surface_, surface_, context_);
}

Program::~Program()
{
    if (!display_) return;
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context_) eglDestroyContext(display_, context_);
    if (surface_) eglDestroySurface(display_, surface_);
}

void Program::makeCurrent()
{
    eglMakeCurrent(display_, surface_, surface_, context_);
}

void Program::upload(const Scene &scene)
{
    scene_ = scene;
    for (const Mesh &mesh : scene.meshes) {
        Buffers buffers{0, 0, static_cast<int>(mesh.indexes.size())};
        glGenBuffers(1, &buffers.vertices);
        glGenBuffers(1, &buffers.indexes);
        glBindBuffer(GL_ARRAY_BUFFER, buffers.vertices);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers.indexes);
        glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(mesh.vertices.size() * sizeof(float)),
                     mesh.vertices.data(), GL_STATIC_DRAW);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                     static_cast<GLsizeiptr>(mesh.indexes.size() * sizeof(std::uint32_t)),
                     mesh.indexes.data(), GL_STATIC_DRAW);
        buffers_.push_back(buffers);
    }
    glViewport(0, 0, width_, height_);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glEnable(GL_LIGHT0);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    const GLfloat ambient[] = {0.2f, 0.2f, 0.2f, 1.0f};
    const GLfloat diffuse[] = {0.62f, 0.62f, 0.62f, 1.0f};
    glLightfv(GL_LIGHT0, GL_AMBIENT, ambient);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, diffuse);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(scene.window[0], scene.window[1], scene.window[2], scene.window[3], scene.window[4],
            scene.window[5]);
    glMatrixMode(GL_MODELVIEW);
}

void Program::draw(float degrees)
{
    drawTurned(
        {scene_.rotation[0] + degrees, scene_.rotation[1], scene_.rotation[2], scene_.rotation[3]});
}

void Program::drawTurned(const std::array<float, 4> &rotation)
{
    const GLfloat white[] = {1.0f, 1.0f, 1.0f, 1.0f};
    glClear(GL_DEPTH_BUFFER_BIT);
    drawBackground(width_, height_);
    glLoadIdentity();
    glTranslatef(scene_.center[0], scene_.center[1], scene_.center[2]);
    glRotatef(rotation[0], rotation[1], rotation[2], rotation[3]);
    glTranslatef(-scene_.center[0], -scene_.center[1], -scene_.center[2]);
    for (std::size_t i = 0; i < buffers_.size(); ++i) {
        const Mesh &mesh = scene_.meshes[i];
        glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, mesh.color.data());
        glMaterialfv(GL_FRONT, GL_SPECULAR, white);
        glMaterialf(GL_FRONT, GL_SHININESS, mesh.shininess);
        glBindBuffer(GL_ARRAY_BUFFER, buffers_[i].vertices);
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers_[i].indexes);
        glVertexPointer(3, GL_FLOAT, 24, nullptr);
        glNormalPointer(GL_FLOAT, 24, reinterpret_cast<const void *>(12));
        glDrawElements(GL_TRIANGLES, buffers_[i].indexCount, GL_UNSIGNED_INT, nullptr);
    }
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glFinish();
}

std::array<unsigned char, 3> Program::middlePixel() const
{
    std::array<unsigned char, 3> pixel{};
    glReadPixels(width_ / 2, height_ / 2, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel.data());
    return pixel;
}

} // namespace bare
