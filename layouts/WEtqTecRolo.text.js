// The roll label as text.
text({ write: () => "" });
