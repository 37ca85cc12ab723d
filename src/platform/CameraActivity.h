#pragma once

// Whether another application uses a camera right now. Blocking: for a worker thread.
class CameraActivity
{
public:
    virtual ~CameraActivity() = default;
    virtual bool cameraInUse() const = 0;
};
