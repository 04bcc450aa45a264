#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace bare {

/// What the least possible program needs to draw a scene: finished arrays, nothing to parse.
struct Mesh
{
    std::vector<float> vertices; ///< position and normal, six floats a vertex
    std::vector<std::uint32_t> indexes;
    std::array<float, 4> color; ///< of the diffuse light; one colour is the whole material
    float shininess;
};

struct Scene
{
    std::vector<Mesh> meshes;
    std::array<double, 6> window;  ///< left, right, bottom, top, near, far
    std::array<float, 3> center;   ///< the point that the world turns about
    std::array<float, 4> rotation; ///< degrees, axis
};

/// One binary file with all of it, so that reading costs no more than the bytes.
bool writeScene(const std::string &path, const Scene &scene);
bool readScene(const std::string &path, Scene *scene);

/// A surfaceless context and the scene's buffers, drawn by plain OpenGL calls in one loop.
class Program
{
public:
    Program(int width, int height);
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    bool isUsable() const { return usable_; }
    void makeCurrent();
    void upload(const Scene &scene);
    /// Draws one frame and waits until it is finished. `degrees` is added to the scene's rotation.
    void draw(float degrees);
    /// The same with a rotation (degrees, axis) in place of the scene's.
    void drawTurned(const std::array<float, 4> &rotation);
    /// The pixel in the middle, to check that something was drawn.
    std::array<unsigned char, 3> middlePixel() const;

private:
    struct Buffers
    {
        unsigned vertices;
        unsigned indexes;
        int indexCount;
    };
    int width_;
    int height_;
    bool usable_ = false;
    void *display_ = nullptr;
    void *context_ = nullptr;
    void *surface_ = nullptr;
    Scene scene_;
    std::vector<Buffers> buffers_;
};

} // namespace bare
