-- Wrong passwords, so that guessing becomes slow at whichever station it happens. QUEM is a user's code, or a drawer that
-- names of nobody share: what was typed there may be a password in the wrong place and is not kept.
CREATE TABLE TEC_TENTATIVA (
  QUEM VARCHAR(20) NOT NULL,
  FALHAS INTEGER DEFAULT 0 NOT NULL,
  ULTIMA TIMESTAMP,
  CONSTRAINT TEC_TENTATIVA_PK PRIMARY KEY (QUEM)
);

-- A person's last actions, newest first; the log is searched by it.
CREATE INDEX TEC_LOG_USUARIO ON TEC_LOG (USUARIO);
