<?php

namespace TemplateTool\Server;

/** Answers a request with an error; the codes are the protocol's. */
final class ResponseError extends \RuntimeException
{
    public const PARSE = -32700;
    public const INVALID_REQUEST = -32600;
    public const UNKNOWN_METHOD = -32601;
    public const INVALID_PARAMETERS = -32602;
    public const INTERNAL = -32603;
    public const NOT_INITIALIZED = -32002;
    public const FAILED = -32803;
    private const CANCELLED = -32800;

    public function __construct(int $code, string $message)
    {
        parent::__construct($message, $code);
    }

    public static function cancelled(): self
    {
        return new self(self::CANCELLED, 'cancelled');
    }

    /** @return array{code: int, message: string} */
    public function toArray(): array
    {
        return ['code' => $this->getCode(), 'message' => $this->getMessage()];
    }
}
