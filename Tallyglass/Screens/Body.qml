TextLabel {}
